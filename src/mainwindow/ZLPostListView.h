#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class ZLIconButton;
class ZLIconView;
class ZLPostListModel;
class ZLSpinner;
class ZLSyncBar;

/// The post list as one sees it: search field and refresh button, the rows, what stands there without rows, and the
/// sync bar below.
class ZLPostListView : public QWidget {
    Q_OBJECT
public:
    explicit ZLPostListView(ZLPostListModel *model, QWidget *parent = nullptr);

    QLineEdit *searchPostsField() const { return m_searchPostsField; }
    ZLIconButton *refreshButton() const { return m_refreshButton; }
    QListView *tableView() const { return m_tableView; }
    ZLSyncBar *syncingView() const { return m_syncingView; }

    void setLoading(bool loading); ///< the big spinner over an empty list
    bool isLoading() const { return m_isLoading; }
    void updateEmptyState();
    void setSyncFailure(const QString &text); ///< the quiet line below the rows; empty: none

Q_SIGNALS:
    void deletePressed();
    void returnPressed();
    void tryAgainPressed(); ///< in the line about a failed round

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void makeHeader();
    void makeTable(ZLPostListModel *model);
    void makeEmptyState();
    void makeSyncFailure();
    bool didPressKeyInSearchField(int key);

    QLineEdit *m_searchPostsField = nullptr;
    ZLIconButton *m_refreshButton = nullptr;
    QListView *m_tableView = nullptr;
    QWidget *m_empty = nullptr;
    ZLIconView *m_emptyIcon = nullptr;
    QLabel *m_emptyHeading = nullptr;
    QLabel *m_emptyText = nullptr;
    ZLSpinner *m_loading = nullptr;
    ZLSyncBar *m_syncingView = nullptr;
    QWidget *m_syncFailure = nullptr;
    QLabel *m_syncFailureText = nullptr;
    QPushButton *m_tryAgain = nullptr;
    bool m_isLoading = false;
};
