#pragma once

#include <QStringView>

/// What the names of HTML elements say. The lists are those of elements.json, which the page's script shares.
namespace ElementKinds {
enum Kind : quint8 {
    Void = 1, ///< has no content and no end tag
    Block = 2, ///< stands on lines of its own, to a browser or to the blog's paragraphs
    RawText = 4, ///< its content is no markup
    KeepsSpace = 8, ///< blank lines and tabs in it say something
    OptionalEnd = 16, ///< its end tag may be left out
    WithinWords = 32, ///< words go on behind its end tag
    ClosesParagraph = 64, ///< cannot be in a paragraph: a browser ends that before it
};
/// The kinds of an element, by its name in any case; 0 for one of none.
quint8 of(QStringView name);

/// Whether what stands at `at` begins like the name of an element that ends the blog's paragraphs: "p" does for
/// "param", too.
bool endsParagraphAt(QStringView text, qsizetype at);
/// The end of such a name and a ">" at `at`, or -1: the whole name, as in a closing tag.
qsizetype endOfParagraphEnder(QStringView text, qsizetype at);
} // namespace ElementKinds
