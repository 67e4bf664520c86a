#pragma once

#include <QString>
#include <QStringList>

/// The stored texts of the things that the passes turn into something else for the page, by number. The page gives each
/// back as long as what stands for it is not edited.
class KeptForms {
public:
    KeptForms();

    /// Notes a stored text, and gives the attribute that leads the page to it, with a blank in front.
    QString attributeFor(QStringView stored);

    /// What the attributes begin with: nobody who writes a body can know it, so none of his elements passes for ours.
    QString mark() const { return m_mark; }
    QStringList texts() const { return m_texts; }

private:
    QString m_mark;
    QStringList m_texts;
};
