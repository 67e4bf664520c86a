#pragma once

#include "model/PostFields.h"
#include "model/ZLFileInfo.h"

#include <QByteArray>

/// What a post file holds, as the format's reader gives it.
///
/// The XML reader has turned the entities into characters once, and title, content and keywords of which there are
/// several are then decoded a second time, although the writer encodes once: a text that holds the literal entity
/// "&lt;" comes out with "<". As intended, each would be decoded once; the second decoding belongs to the format, and
/// stays. What the file truly stored is kept beside it in storedTitle and storedContent.
struct PostFile : PostFields { // title and content: null when there is none
    ZLFileInfo fileInfo;
    QString storedTitle; ///< decoded once, untrimmed, line ends and control characters as they are; null without any
    QString storedContent;
    bool isWhole = false; ///< well-formed to the end, with "zalmo" as its root

    /// Reads a file's bytes. What is damaged yields what can be made out; raw control characters and bytes that are
    /// no UTF-8 damage nothing, though XML forbids them.
    static PostFile fromData(const QByteArray &data);
    /// The fields with both texts as they were stored.
    PostFields stored() const;
};
