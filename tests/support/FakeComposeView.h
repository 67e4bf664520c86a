#pragma once

#include "compose/ComposeView.h"

/// The fields and buttons without a window.
class FakeComposeView : public ComposeView {
public:
    QString title() const override { return titleText; }
    void setTitle(const QString &title) override { titleText = title; }
    QStringList tokens() const override { return tokenTexts; }
    void setTokens(const QStringList &tokens) override { tokenTexts = tokens; }
    void forgetTypedToken() override { typedToken.clear(); }
    void setTokensShown(bool shown) override { areTokensShown = shown; }
    void commitTokens() override { }
    void focusTitle() override { }
    void focusTokens() override { }
    void setButtons(const PostButtons &shown) override { buttons = shown; }
    void setActionsEnabled(bool enabled) override { actionsEnabled = enabled; }
    void setSelectionStyle(const SelectionStyle &newStyle) override { style = newStyle; }
    void setNotice(const QString &text, const QString &action, const QString &) override
    {
        notice = text;
        noticeAction = action;
    }
    void setSaveState(const QString &text) override { saveState = text; }
    void hidePopupWindows() override { deleteQuestion.clear(); }
    void showLoadingView(const QString &newHeading, const QString &newStep, const QString &newBlogName) override
    {
        isLoading = true;
        updateLoadingView(newHeading, newStep);
        blogName = newBlogName;
    }
    void showDeletingView(const QString &newHeading, const QString &newStep) override
    {
        showLoadingView(newHeading, newStep, {});
    }
    void updateLoadingView(const QString &newHeading, const QString &newStep) override
    {
        heading = newHeading;
        step = newStep;
    }
    void setUploadProgress(float newProgress) override { progress = newProgress; }
    void hideLoadingView() override { isLoading = false; }
    void showDeleteAlert(const QString &question, const QString &title, const QString &text) override
    {
        deleteQuestion = u"%1 \"%2\""_qs.arg(question, title);
        deleteText = text;
    }
    QCoro::Task<LinkAnswer> askForLink(PageLink link) override
    {
        askedLinks.append(link);
        if (whileAsking)
            whileAsking();
        const LinkAnswer answer = linkAnswer;
        co_return answer;
    }
    QCoro::Task<QUrl> chooseMedia() override
    {
        const QUrl chosen = media; // GCC 12 would move out of a member that is returned itself
        co_return chosen;
    }

    void typeTitle(const QString &title)
    {
        if (!std::exchange(isEditingTitle, true))
            Q_EMIT titleDidBeginEditing();
        titleText = title;
        Q_EMIT titleDidChange();
    }
    void typeTokens(const QStringList &tokens)
    {
        tokenTexts = tokens;
        Q_EMIT tokensDidChange();
    }

    QString titleText;
    QString typedToken; ///< which is none yet
    QStringList tokenTexts;
    PostButtons buttons;
    QList<PageLink> askedLinks;
    LinkAnswer linkAnswer;
    std::function<void()> whileAsking; ///< what happens while the link sheet is up
    QString notice, noticeAction, saveState, heading, step, blogName, deleteQuestion, deleteText;
    SelectionStyle style;
    QUrl media;
    float progress = 0;
    bool actionsEnabled = true;
    bool areTokensShown = true;
    bool isLoading = false;
    bool isEditingTitle = false;
};
