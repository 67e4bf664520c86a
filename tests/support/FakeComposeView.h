#pragma once

#include "compose/ComposeView.h"

/// The fields and buttons without a window.
class FakeComposeView : public ComposeView {
public:
    QString title() const override { return titleText; }
    void setTitle(const QString &title) override { titleText = title; }
    QStringList tokens() const override { return tokenTexts; }
    void setTokens(const QStringList &tokens) override { tokenTexts = tokens; }
    void commitTokens() override { }
    void focusTitle() override { }
    void focusTokens() override { }
    void setSaveButton(const Button &button) override { save = button; }
    void setPublishButton(const Button &button) override { publish = button; }
    void setCalendarButton(const Button &button) override { calendar = button; }
    void setDeleteToolTip(const QString &toolTip) override { deleteToolTip = toolTip; }
    void setActionsEnabled(bool enabled) override { actionsEnabled = enabled; }
    void setSelectionStyle(const SelectionStyle &newStyle) override { style = newStyle; }
    void setNotice(const QString &text) override { notice = text; }
    void setSaveState(const QString &text) override { saveState = text; }
    void hidePopupWindows() override { deleteQuestion.clear(); }
    void showLoadingView(const QString &newHeading, const QString &newStep, const QString &newBlogName) override
    {
        isLoading = true;
        updateLoadingView(newHeading, newStep);
        blogName = newBlogName;
    }
    void updateLoadingView(const QString &newHeading, const QString &newStep) override
    {
        heading = newHeading;
        step = newStep;
    }
    void setUploadProgress(float newProgress) override { progress = newProgress; }
    void hideLoadingView() override { isLoading = false; }
    void showDeleteAlert(const QString &question, const QString &title) override
    {
        deleteQuestion = u"%1 \"%2\""_qs.arg(question, title);
    }
    void showAddLinkSheet(const QString &url, const QString &tooltip, bool newWindow) override
    {
        link = u"%1 %2 %3"_qs.arg(url, tooltip).arg(newWindow);
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
    QStringList tokenTexts;
    Button save, publish, calendar;
    QString deleteToolTip, notice, saveState, heading, step, blogName, deleteQuestion, link;
    SelectionStyle style;
    QUrl media;
    float progress = 0;
    bool actionsEnabled = true;
    bool isLoading = false;
    bool isEditingTitle = false;
};
