#pragma once

#include "compose/ComposePage.h"

#include <QCoroFuture>
#include <QPromise>
#include <memory>

/// A page without an engine: notes what it is told, answers with `body`, at once or when the test lets it.
class FakeComposePage : public ComposePage {
public:
    using Answer = std::optional<QString>;

    void loadHTMLContent(const EditorBody &content, int newOwner, Loading newLoading) override
    {
        QString text;
        for (const BodyPiece &piece : content.pieces)
            text += piece.stored();
        loaded.append(text);
        owner = newOwner;
        loading = newLoading;
        body = text;
    }
    QCoro::Task<Answer> getBodyContent() override
    {
        const Answer now = body; // GCC 12 would move out of a member that is returned itself
        if (!holdsAnswers)
            co_return now;
        const auto promise = std::make_shared<QPromise<Answer>>();
        promise->start();
        held.append(promise);
        const QFuture<Answer> future = promise->future();
        co_return co_await future;
    }
    QCoro::Task<Answer> getRawContent() override { return getBodyContent(); }
    void addImage(const ImageInfo &image) override { images.append(image); }
    void execCommand(const QString &command) override { calls.append(command); }
    QCoro::Task<std::optional<PageLink>> addLinkMarkToCurrentSelection() override
    {
        calls.append(u"addLinkMark"_qs);
        const std::optional<PageLink> now = link;
        co_return now;
    }
    void addLinkToSelection(const QString &url, const QString &tooltip, bool newWindow) override
    {
        calls.append(u"addLink %1 %2 %3"_qs.arg(url, tooltip).arg(newWindow));
    }
    void removeLink() override { calls.append(u"removeLink"_qs); }
    void removeLinkMarkForCurrentSelection() override { calls.append(u"removeLinkMark"_qs); }
    void hidePopupWindows() override { }
    void focus() override { calls.append(u"focus"_qs); }
    void cleanUndoStack() override { }
    void setBlogURL(const QUrl &url) override { blogURL = url; }

    /// The writer changed the content to `html`.
    void type(const QString &html)
    {
        body = html;
        Q_EMIT setPostContent(html, owner);
    }
    /// Answers what was asked first.
    void answer(const Answer &content)
    {
        const auto promise = held.takeFirst();
        promise->addResult(content);
        promise->finish();
    }

    Answer body = QString::fromLatin1("");
    int owner = -1;
    Loading loading = Loading::NewPost; ///< of the last content
    PageLink link; ///< under the cursor
    QUrl blogURL;
    bool holdsAnswers = false;
    QList<std::shared_ptr<QPromise<Answer>>> held;
    QStringList loaded;
    QStringList calls;
    QList<ImageInfo> images;
};
