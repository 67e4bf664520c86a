#pragma once

#include "compose/ComposeView.h"

#include <QPointer>
#include <QWidget>
#include <functional>

class QFrame;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QVBoxLayout;
class ZLAddLinkPopupView;
class ZLAlertView;
class ZLComposeBar;
class ZLIconView;
class ZLLoadingView;
class ZLSheetHost;
class ZLTextViewWithPlaceHolder;
class ZLTokenField;

/// The compose screen as a widget: the bar, the title, the page, the tokens, and what is laid over them. The page's
/// widget comes later than the rest, since making it starts the web engine.
class ZLComposeWidget : public QWidget {
    Q_OBJECT
public:
    explicit ZLComposeWidget(QWidget *parent = nullptr);
    ~ZLComposeWidget() override;

    /// The controller's face of this widget.
    ComposeView &view();
    void setPageWidget(QWidget *page);
    void setSheetHost(ZLSheetHost *host);
    void setCompletions(std::function<QStringList(const QString &)> completions);

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    class View;

    QWidget *makeTitleRow();
    QWidget *makeLine();
    QWidget *makeTokenRow();
    QFrame *makeNotice();
    void connectView();
    void updateContentEnabled();
    void cover(const QString &blogName);
    void rememberFocus();
    void focusTitle();
    void showDeleteAlert(const QString &heading, const QString &title, const QString &text);
    void endDeleteAlert();
    QCoro::Task<LinkAnswer> askForLink(PageLink link);
    QCoro::Task<QUrl> chooseMedia();

    View *m_view;
    QWidget *m_content;
    ZLComposeBar *m_bar;
    // These before the notice, whose making fills them.
    ZLIconView *m_noticeIcon = nullptr;
    QLabel *m_noticeText = nullptr;
    QPushButton *m_noticeAction = nullptr;
    QFrame *m_notice;
    QHBoxLayout *m_titleRow = nullptr;
    ZLTextViewWithPlaceHolder *m_title = nullptr;
    QVBoxLayout *m_pageArea;
    QVBoxLayout *m_tokenIcon = nullptr;
    QWidget *m_tokenRow = nullptr;
    ZLTokenField *m_tokens = nullptr;
    ZLLoadingView *m_loading;
    QPointer<ZLSheetHost> m_sheetHost;
    QPointer<ZLAlertView> m_deleteAlert;
    QPointer<ZLAddLinkPopupView> m_addLinkSheet;
    QPointer<QWidget> m_focusBefore;
    bool m_actionsEnabled = true;
    bool m_wantsTitleFocus = false;
};
