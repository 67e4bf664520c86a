#pragma once

#include "app/AppEnvironment.h"

#include <QSet>

/// Tells the user when a post's file could not be written, once for each streak of failures. The document controller
/// holds the document until it is written.
class SaveFailures : public QObject {
    Q_OBJECT
public:
    explicit SaveFailures(AppEnvironment &environment);

    /// The posts whose text is in memory only, by title; without one, by file.
    QStringList unsavedPosts() const;

private:
    void didFailToSave(const DocumentPtr &document, const ZLError &error);

    AppEnvironment &m_environment;
    QSet<const ZLDocument *> m_failing;
};
