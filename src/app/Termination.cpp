#include "app/Termination.h"

#include "app/ZLAppDelegate.h"

namespace {

constexpr int quitAnyway = 0;
constexpr int cancel = 1;

struct Question {
    QString message;
    QString text;
};

std::optional<Question> aboutUnsavedPosts(ZLAppDelegate &app)
{
    app.documentController().saveAll();
    const QStringList unsaved = app.saveFailures().unsavedPosts();
    if (unsaved.isEmpty())
        return std::nullopt;
    return Question{u"A post could not be saved. Quit anyway?"_qs,
        u"What you wrote since the last save would be lost:\n%1"_qs.arg(unsaved.join(u'\n'))};
}

std::optional<Question> aboutUploads(ZLAppDelegate &app)
{
    const QStringList titles = app.services().postsOnTheirWay();
    if (titles.isEmpty())
        return std::nullopt;
    return Question{u"A post is still on its way to the blog. Quit anyway?"_qs,
        u"It may not arrive, or arrive without your knowing:\n%1"_qs.arg(titles.join(u'\n'))};
}

std::optional<Question> aboutStore(ZLAppDelegate &app)
{
    ZLManagedObjectContext *context = app.store().openContext();
    if (!context || !context->hasChanges())
        return std::nullopt;
    const Result<void> saved = context->save();
    if (saved)
        return std::nullopt;
    return Question{u"Could not save changes while quitting. Quit anyway?"_qs,
        u"Quitting now will lose any changes you have made since the last successful save\n%1"_qs.arg(
            saved.error().description)};
}

using Aspect = std::optional<Question> (*)(ZLAppDelegate &);
constexpr Aspect aspects[] = {aboutUnsavedPosts, aboutUploads, aboutStore};

} // namespace

QCoro::Task<bool> terminate(QPointer<ZLAppDelegate> app)
{
    app->openPosts().remember();
    for (const Aspect about : aspects) {
        const std::optional<Question> question = about(*app);
        if (!question)
            continue;
        const QStringList buttons{u"Quit anyway"_qs, u"Cancel"_qs};
        const int answer = co_await app->prompts().ask(question->message, question->text, buttons, cancel);
        if (!app || answer != quitAnyway)
            co_return false;
    }
    co_return true;
}
