#include "editor/ZLComposeWidget.h"

#include "editor/PageColumn.h"
#include "editor/ZLAddLinkPopupView.h"
#include "editor/ZLComposeBar.h"
#include "widgets/ZLAlertView.h"
#include "widgets/ZLIconView.h"
#include "widgets/ZLLoadingView.h"
#include "widgets/ZLPlainText.h"
#include "widgets/ZLSheetHost.h"
#include "widgets/ZLTextViewWithPlaceHolder.h"
#include "widgets/ZLTheme.h"
#include "widgets/ZLTokenField.h"

#include <QCoroFuture>
#include <QCoroSignal>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStandardPaths>
#include <QVBoxLayout>

/// The widget as its controller sees it.
class ZLComposeWidget::View : public ComposeView {
public:
    explicit View(ZLComposeWidget &widget)
        : ComposeView(&widget)
        , m_widget(widget)
    {
    }

    QString title() const override { return m_widget.m_title->string(); }
    void setTitle(const QString &title) override { m_widget.m_title->setString(title); }
    QStringList tokens() const override { return m_widget.m_tokens->tokens(); }
    void setTokens(const QStringList &tokens) override { m_widget.m_tokens->setTokens(tokens); }
    void forgetTypedToken() override { m_widget.m_tokens->forgetTypedText(); }
    void setTokensShown(bool shown) override { m_widget.m_tokenRow->setVisible(shown); }
    void commitTokens() override { m_widget.m_tokens->commit(); }
    void focusTitle() override { m_widget.focusTitle(); }
    void focusTokens() override { m_widget.m_tokens->setFocus(Qt::TabFocusReason); }
    // The bar has no calendar while dates cannot be chosen.
    void setButtons(const PostButtons &buttons) override { m_widget.m_bar->setButtons(buttons); }
    void setSelectionStyle(const SelectionStyle &style) override { m_widget.m_bar->setSelectionStyle(style); }

    void setActionsEnabled(bool enabled) override
    {
        m_widget.m_actionsEnabled = enabled;
        m_widget.updateContentEnabled();
    }

    void setNotice(const QString &text, const QString &action, const QString &icon) override
    {
        if (icon.isEmpty())
            m_widget.m_noticeIcon->setIcon(QStringLiteral("editor_notice"), ZLTheme::warning);
        else
            m_widget.m_noticeIcon->setIcon(icon, ZLTheme::secondaryText);
        m_widget.m_noticeText->setText(text);
        m_widget.m_noticeAction->setText(action);
        m_widget.m_noticeAction->setVisible(!action.isEmpty());
        m_widget.m_notice->setVisible(!text.isEmpty());
    }

    void setSaveState(const QString &text) override { m_widget.m_bar->setSaveState(text); }

    void hidePopupWindows() override
    {
        m_widget.m_tokens->hideCompletions();
        m_widget.endDeleteAlert();
    }

    void showLoadingView(const QString &heading, const QString &step, const QString &blogName) override
    {
        updateLoadingView(heading, step);
        m_widget.cover(blogName);
    }

    void showDeletingView(const QString &heading, const QString &step) override
    {
        updateLoadingView(heading, step);
        m_widget.cover({});
    }

    void updateLoadingView(const QString &heading, const QString &step) override
    {
        m_widget.m_loading->setPostTypeText(heading);
        m_widget.m_loading->setCurrentStatus(step);
    }

    void setUploadProgress(float progress) override { m_widget.m_loading->setProgress(progress); }

    void hideLoadingView() override
    {
        m_widget.m_loading->fadeOut();
        m_widget.updateContentEnabled();
    }

    void showDeleteAlert(const QString &heading, const QString &title, const QString &text) override
    {
        m_widget.showDeleteAlert(heading, title, text);
    }

    QCoro::Task<LinkAnswer> askForLink(PageLink link) override { return m_widget.askForLink(link); }
    QCoro::Task<QUrl> chooseMedia() override { return m_widget.chooseMedia(); }

private:
    ZLComposeWidget &m_widget;
};

ZLComposeWidget::ZLComposeWidget(QWidget *parent)
    : QWidget(parent)
    , m_view(new View(*this))
    , m_content(new QWidget(this))
    , m_bar(new ZLComposeBar(m_content))
    , m_notice(makeNotice())
    , m_pageArea(new QVBoxLayout)
    , m_loading(new ZLLoadingView(this))
{
    m_loading->setObjectName(QStringLiteral("uploadOverlay"));
    auto *column = new QVBoxLayout(m_content);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addWidget(m_notice);
    column->addWidget(makeTitleRow());
    m_pageArea->setContentsMargins({});
    column->addLayout(m_pageArea, 1);
    column->addWidget(makeLine());
    column->addWidget(m_tokenRow = makeTokenRow());
    auto *whole = new QVBoxLayout(this);
    whole->setContentsMargins({});
    whole->addWidget(m_content);
    connectView();
}

ZLComposeWidget::~ZLComposeWidget() = default;

ComposeView &ZLComposeWidget::view()
{
    return *m_view;
}

QWidget *ZLComposeWidget::makeTitleRow()
{
    auto *row = new QWidget(m_content);
    m_titleRow = new QHBoxLayout(row);
    m_title = new ZLTextViewWithPlaceHolder(QStringLiteral(" Your title here"), row);
    m_title->setObjectName(QStringLiteral("titleField"));
    m_title->setFont(ZLTheme::font(font(), 2, QFont::Bold));
    m_title->viewport()->setAutoFillBackground(false);
    m_titleRow->addWidget(m_title);
    return row;
}

void ZLComposeWidget::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const int side = PageColumn::margin(width()) - qRound(m_title->document()->documentMargin());
    m_titleRow->setContentsMargins(side, 3 * ZLTheme::spacing, side, ZLTheme::spacing);
    const int iconTop = (m_tokens->rowHeight() - m_tokenIcon->itemAt(0)->widget()->height()) / 2;
    m_tokenIcon->setContentsMargins(0, iconTop, 0, 0); // beside the first row of tokens
}

QWidget *ZLComposeWidget::makeLine()
{
    auto *line = new QWidget(m_content);
    line->setFixedHeight(1);
    line->setBackgroundRole(QPalette::Mid);
    line->setAutoFillBackground(true);
    return line;
}

QWidget *ZLComposeWidget::makeTokenRow()
{
    auto *row = new QFrame(m_content);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(2 * ZLTheme::spacing + 4, ZLTheme::spacing, 2 * ZLTheme::spacing, ZLTheme::spacing);
    layout->setSpacing(ZLTheme::spacing + 2);
    auto *icon = new ZLIconView(QStringLiteral("editor_token_field"), 16, row, ZLTheme::secondaryText);
    icon->setToolTip(QStringLiteral("Tags and Categories"));
    m_tokens = new ZLTokenField(QStringLiteral("categories and #tags"), row);
    m_tokens->setObjectName(QStringLiteral("tokenField"));
    m_tokenIcon = new QVBoxLayout;
    m_tokenIcon->addWidget(icon);
    m_tokenIcon->addStretch();
    layout->addLayout(m_tokenIcon);
    layout->addWidget(m_tokens, 1);
    return row;
}

QFrame *ZLComposeWidget::makeNotice()
{
    auto *notice = new QFrame(m_content);
    notice->setObjectName(QStringLiteral("composeNotice"));
    notice->setBackgroundRole(QPalette::AlternateBase);
    notice->setAutoFillBackground(true);
    notice->hide();
    auto *row = new QHBoxLayout(notice);
    row->setContentsMargins(2 * ZLTheme::spacing + 4, ZLTheme::spacing, 2 * ZLTheme::spacing, ZLTheme::spacing);
    m_noticeIcon = new ZLIconView(QStringLiteral("editor_notice"), 16, notice, ZLTheme::warning);
    m_noticeText = ZLPlainText::label(notice);
    m_noticeText->setWordWrap(true);
    row->addWidget(m_noticeIcon);
    row->addWidget(m_noticeText, 1);
    m_noticeAction = new QPushButton(notice);
    m_noticeAction->setObjectName(QStringLiteral("noticeAction"));
    m_noticeAction->hide();
    row->addWidget(m_noticeAction);
    return notice;
}

void ZLComposeWidget::connectView()
{
    connect(m_title, &ZLTextViewWithPlaceHolder::didBeginEditing, m_view, &ComposeView::titleDidBeginEditing);
    connect(m_title, &ZLTextViewWithPlaceHolder::didChange, m_view, &ComposeView::titleDidChange);
    connect(m_title, &ZLTextViewWithPlaceHolder::didTakeFocus, m_view, &ComposeView::fieldDidTakeFocus);
    connect(m_title, &ZLTextViewWithPlaceHolder::insertTab, m_view, &ComposeView::insertTabInTitle);
    connect(m_tokens, &ZLTokenField::tokensDidChange, m_view, &ComposeView::tokensDidChange);
    connect(m_tokens, &ZLTokenField::didTakeFocus, m_view, &ComposeView::fieldDidTakeFocus);
    connect(m_bar, &ZLComposeBar::didPressedFormatButton, m_view, &ComposeView::didPressedFormatButton);
    connect(m_bar, &ZLComposeBar::didPressedLinkButton, m_view, &ComposeView::didPressedLinkButton);
    connect(m_bar, &ZLComposeBar::didPressedInsertMedia, m_view, &ComposeView::didPressedInsertMedia);
    connect(m_bar, &ZLComposeBar::didPressedSaveButton, m_view, &ComposeView::didPressedSaveButton);
    connect(m_bar, &ZLComposeBar::didPressedPublishButton, m_view, &ComposeView::didPressedPublishButton);
    connect(m_bar, &ZLComposeBar::didPressedDeleteButton, m_view, &ComposeView::didPressedDeleteButton);
    connect(m_noticeAction, &QPushButton::clicked, m_view, &ComposeView::didPressedNoticeAction);
    connect(m_loading, &ZLLoadingView::didPressCancel, m_view, &ComposeView::didPressedCancelUpload);
}

void ZLComposeWidget::setPageWidget(QWidget *page)
{
    page->setParent(m_content);
    m_pageArea->addWidget(page, 1);
    setTabOrder(m_title, page);
    setTabOrder(page, m_tokens);
    page->show();
}

void ZLComposeWidget::setSheetHost(ZLSheetHost *host)
{
    m_sheetHost = host;
}

void ZLComposeWidget::setCompletions(std::function<QStringList(const QString &)> completions)
{
    m_tokens->setCompletions(std::move(completions));
}

void ZLComposeWidget::updateContentEnabled()
{
    const bool enable = m_actionsEnabled && !m_loading->isShowing();
    if (enable == m_content->isEnabled())
        return;
    m_content->setEnabled(enable);
    if (m_loading->isShowing() && m_focusBefore)
        m_loading->takeFocus();
    if (!enable || !m_sheetHost)
        return;
    const QPointer<QWidget> before = std::exchange(m_focusBefore, nullptr);
    // Whoever has gone on to the post list meanwhile stays there.
    const QWidget *focused = m_sheetHost->focusBehind();
    const bool isFree =
        !focused || focused == m_loading || m_loading->isAncestorOf(focused) || m_content->isAncestorOf(focused);
    if (std::exchange(m_wantsTitleFocus, false))
        m_sheetHost->setFocusBehind(m_title);
    else if (before && isFree)
        m_sheetHost->setFocusBehind(before);
}

/// Without a blog that something goes to there is nothing to cancel either.
void ZLComposeWidget::cover(const QString &blogName)
{
    rememberFocus();
    m_loading->setBlogName(blogName);
    m_loading->setCanCancel(!blogName.isEmpty());
    m_loading->setProgress(0);
    m_loading->fadeIn();
    updateContentEnabled();
}

void ZLComposeWidget::rememberFocus()
{
    QWidget *focused = window()->focusWidget();
    if (focused && m_content->isAncestorOf(focused))
        m_focusBefore = focused;
}

void ZLComposeWidget::focusTitle()
{
    m_wantsTitleFocus = !m_content->isEnabled();
    m_title->setFocus(Qt::OtherFocusReason);
}

void ZLComposeWidget::showDeleteAlert(const QString &heading, const QString &title, const QString &text)
{
    if (!m_sheetHost)
        return;
    if (!m_deleteAlert) {
        m_deleteAlert = new ZLAlertView;
        connect(m_deleteAlert, &ZLAlertView::didDismissWithButtonIndex, this, [this](int index) {
            endDeleteAlert();
            Q_EMIT m_view->alertViewDidDismissWithButtonIndex(index);
        });
    }
    m_deleteAlert->ask(heading, title, text);
    m_sheetHost->beginSheet(m_deleteAlert);
}

void ZLComposeWidget::endDeleteAlert()
{
    if (m_sheetHost && m_deleteAlert)
        m_sheetHost->endSheet(m_deleteAlert);
}

QCoro::Task<LinkAnswer> ZLComposeWidget::askForLink(PageLink link)
{
    const QPointer<ZLComposeWidget> self(this);
    if (!m_sheetHost)
        co_return LinkAnswer();
    if (!m_addLinkSheet)
        m_addLinkSheet = new ZLAddLinkPopupView;
    const QPointer<ZLAddLinkPopupView> sheet = m_addLinkSheet;
    sheet->setLink(link);
    m_sheetHost->beginSheet(sheet);
    const std::optional<LinkAnswer> answer = co_await qCoro(sheet.data(), &ZLAddLinkPopupView::answered);
    if (self && m_sheetHost && sheet)
        m_sheetHost->endSheet(sheet);
    co_return answer.value_or(LinkAnswer());
}

QCoro::Task<QUrl> ZLComposeWidget::chooseMedia()
{
    const QPointer<ZLComposeWidget> self(this);
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    // A folder that is not there would be taken for the name of a file.
    auto *panel =
        new QFileDialog(this, QStringLiteral("Insert media"), QFileInfo(pictures).isDir() ? pictures : QDir::homePath(),
            QStringLiteral("Pictures (*.png *.PNG *.jpeg *.JPEG *.jpg *.JPG *.gif *.GIF)"));
    panel->setFileMode(QFileDialog::ExistingFile);
    panel->setLabelText(QFileDialog::Accept, QStringLiteral("Select"));
    panel->open();
    const std::optional<int> result = co_await qCoro(panel, &QDialog::finished);
    if (!self)
        co_return {};
    const QList<QUrl> chosen = panel->selectedUrls();
    panel->deleteLater();
    co_return result == QDialog::Accepted && !chosen.isEmpty() ? chosen.constFirst() : QUrl();
}

void ZLComposeWidget::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && !isActiveWindow())
        Q_EMIT m_view->didResignMain();
}

void ZLComposeWidget::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), palette().color(QPalette::Base));
}
