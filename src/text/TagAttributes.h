#pragma once

#include <QStringView>

/// One attribute of a tag.
struct TagAttribute {
    qsizetype start = 0; ///< where its name begins
    qsizetype end = 0; ///< behind its value, with the quote
    QStringView name;
    qsizetype valueStart = 0;
    QStringView value; ///< without quotes

    bool is(QStringView wanted) const
    {
        return name.size() == wanted.size() && name.compare(wanted, Qt::CaseInsensitive) == 0;
    }
};

/// Reads the attributes of a start tag from left to right as a browser does. Places are those of the whole text.
class TagAttributes {
public:
    /// `start` is the place of "<".
    TagAttributes(QStringView text, qsizetype start);
    bool next(TagAttribute &found);
    /// Goes on to the first attribute of this name.
    bool find(QStringView name, TagAttribute &found);
    /// Behind the ">" of the tag, or the size of the text.
    qsizetype tagEnd() const;

private:
    QStringView m_text;
    qsizetype m_at;
};
