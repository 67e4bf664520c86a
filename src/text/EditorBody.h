#pragma once

#include "text/BodyPieces.h"

#include <QHash>
#include <QStringList>

/// A body as the editor page takes it. Without pieces it is that of a blank post.
struct EditorBody {
    QList<BodyPiece> pieces; ///< their stored texts joined are the stored body
    QHash<QString, QString> localImages; ///< local address put in, to the remote one that it stands for
    bool isBlockEditor = false;
    bool isTooLarge = false; ///< to be shown as its source; then there is one piece, without html
    QString mark; ///< what leads from an element of `html` to its stored text: see KeptForms
    QStringList kept; ///< those texts, by number
};
