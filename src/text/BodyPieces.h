#pragma once

#include <QList>
#include <QString>

/// One top-level piece of a stored body.
struct BodyPiece {
    QString lead; ///< what stands before the part that is shown (white space, an opening block comment)
    QString core; ///< the part that is shown
    QString tail;
    QString html; ///< `core` in the editor's form

    /// As the blog has it, byte for byte, with the white space and block comments around it.
    QString stored() const { return lead + core + tail; }
};

namespace BodyPieces {
/// Cuts a stored body into its top-level pieces; their stored texts joined are the body again, whatever it holds.
/// `html` is still empty. A piece is a block of the block editor (its comments are in lead and tail), a block-level
/// element, a line with nothing but a player's shortcode or address, or a run of text and inline elements up to a blank
/// line. Linear in the body's length.
QList<BodyPiece> split(const QString &stored);

/// Whether a body would take the page too long: too many characters, tags, or elements inside one another. It is then
/// shown as its source.
bool isTooLarge(const QString &stored);
} // namespace BodyPieces
