#include "app/Termination.h"

namespace {

constexpr int quitAnyway = 0;
constexpr int cancel = 1;

QStringList quitButtons()
{
    return {u"Quit anyway"_qs, u"Cancel"_qs};
}

} // namespace

QCoro::Task<bool> terminate(QPointer<QObject> controller, Collaborators &collaborators)
{
    Collaborators &c = collaborators;
    c.environment.documents.saveAll();
    const QStringList unsaved = c.saveFailures.unsavedPosts();
    Prompts &prompts = *c.environment.windows.prompts;
    if (!unsaved.isEmpty()) {
        const int answer = co_await prompts.ask(u"A post could not be saved. Quit anyway?"_qs,
            u"What you wrote since the last save would be lost:\n%1"_qs.arg(unsaved.join(u'\n')), quitButtons(),
            cancel);
        if (!controller || answer != quitAnyway)
            co_return false;
    }

    ZLManagedObjectContext *context = c.store.openContext();
    if (!context || !context->hasChanges())
        co_return true;
    const Result<void> saved = context->save();
    if (saved)
        co_return true;
    prompts.alertWithError(saved.error());
    // Both buttons quit, on purpose; meant was that "Cancel" stays.
    (void)co_await prompts.ask(u"Could not save changes while quitting. Quit anyway?"_qs,
        u"Quitting now will lose any changes you have made since the last successful save"_qs, quitButtons());
    co_return true;
}
