#include "app/SaveFailures.h"

SaveFailures::SaveFailures(AppEnvironment &environment)
    : m_environment(environment)
{
    connect(&environment.documents, &ZLDocumentController::didFailToSave, this, &SaveFailures::didFailToSave);
}

void SaveFailures::didFailToSave(const DocumentPtr &document, const ZLError &error)
{
    const ZLDocument *key = document.get();
    if (m_failing.contains(key))
        return;
    m_failing.insert(key);
    const auto streakEnds = [this, key] {
        key->disconnect(this);
        m_failing.remove(key);
    };
    connect(key, &ZLDocument::didSave, this, streakEnds);
    connect(key, &QObject::destroyed, this, streakEnds);
    m_environment.windows.prompts->alert(
        u"The post could not be saved to “%1”."_qs.arg(document->fileURL().toLocalFile()),
        u"%1\n\nYour text is kept while Zalmo is open, and Zalmo tries again when you go on writing. Make room on the "
        "disk, or see that you may write to that folder."_qs.arg(error.description));
}

QStringList SaveFailures::unsavedPosts() const
{
    QStringList posts;
    const QList<DocumentPtr> documents = m_environment.documents.documents();
    for (const DocumentPtr &document : documents) {
        if (!document->hasUnautosavedChanges())
            continue;
        const QString title = document->post.title.trimmed();
        posts.append(title.isEmpty() ? document->fileURL().toLocalFile() : u"“%1”"_qs.arg(title));
    }
    return posts;
}
