#include "mainwindow/ZLPostListView.h"

#include "mainwindow/ZLPostListCellView.h"
#include "mainwindow/ZLPostListModel.h"
#include "widgets/ZLIconButton.h"
#include "widgets/ZLIconView.h"
#include "widgets/ZLIcons.h"
#include "widgets/ZLPlainText.h"
#include "widgets/ZLSpinner.h"
#include "widgets/ZLSyncBar.h"
#include "widgets/ZLTheme.h"

#include <QAction>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

ZLPostListView::ZLPostListView(ZLPostListModel *model, QWidget *parent)
    : QWidget(parent)
{
    setFixedWidth(ZLTheme::toolViewWidth);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 1, 0); // the last pixel is the separator's
    column->setSpacing(0);
    makeHeader();
    makeTable(model);
    makeEmptyState();
    makeSyncFailure();
    m_syncingView = new ZLSyncBar(tr("Syncing your posts…"), tr("Stop"), m_tableView);
    m_syncingView->setObjectName(u"syncBar"_qs);
    connect(model, &QAbstractItemModel::modelReset, this, &ZLPostListView::updateEmptyState);
    updateEmptyState();
}

void ZLPostListView::makeHeader()
{
    m_searchPostsField = new QLineEdit(this);
    m_searchPostsField->setObjectName(u"searchPostsField"_qs);
    m_searchPostsField->setPlaceholderText(tr("Search posts"));
    m_searchPostsField->setAccessibleName(tr("Search posts"));
    m_searchPostsField->addAction(ZLIcons::icon(u"postlist_search"_qs), QLineEdit::LeadingPosition);
    m_searchPostsField->setClearButtonEnabled(true);
    m_searchPostsField->installEventFilter(this);
    m_refreshButton = new ZLIconButton(u"postlist_refresh"_qs, tr("Refresh"), this);
    m_refreshButton->setObjectName(u"refreshButton"_qs);
    m_refreshButton->setSides(34, 17);

    auto *header = new QHBoxLayout;
    header->setContentsMargins(12, 12, ZLTheme::spacing, 12);
    header->setSpacing(ZLTheme::spacing / 2);
    header->addWidget(m_searchPostsField, 1);
    header->addWidget(m_refreshButton);
    static_cast<QVBoxLayout *>(layout())->addLayout(header);
}

void ZLPostListView::makeTable(ZLPostListModel *model)
{
    m_tableView = new QListView(this);
    m_tableView->setObjectName(u"postList"_qs);
    m_tableView->setAccessibleName(tr("Posts"));
    m_tableView->setModel(model);
    m_tableView->setItemDelegate(new ZLPostListCellView(m_tableView));
    m_tableView->setFrameShape(QFrame::NoFrame);
    m_tableView->setUniformItemSizes(true);
    m_tableView->setMouseTracking(true);
    m_tableView->setSelectionMode(QAbstractItemView::SingleSelection);
    m_tableView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tableView->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_tableView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_tableView->setContextMenuPolicy(Qt::CustomContextMenu);
    m_tableView->viewport()->setBackgroundRole(QPalette::AlternateBase);
    m_tableView->installEventFilter(this);
    layout()->addWidget(m_tableView);
}

void ZLPostListView::makeEmptyState()
{
    m_empty = new QWidget(m_tableView);
    m_emptyIcon = new ZLIconView(u"postlist_empty"_qs, 32, m_empty, ZLTheme::secondaryText);
    m_emptyHeading = ZLPlainText::label(m_empty);
    m_emptyHeading->setObjectName(u"emptyHeading"_qs);
    m_emptyHeading->setFont(ZLTheme::font(font(), 0, QFont::DemiBold));
    m_emptyText = ZLPlainText::label(m_empty);
    m_emptyText->setFont(ZLTheme::font(font(), -1));
    m_emptyText->setForegroundRole(QPalette::PlaceholderText);
    m_loading = new ZLSpinner(32, m_empty);
    auto *column = new QVBoxLayout(m_empty);
    column->setContentsMargins(32, 0, 32, 0);
    column->setSpacing(ZLTheme::spacing);
    column->addStretch(2);
    column->addWidget(m_loading, 0, Qt::AlignHCenter);
    column->addWidget(m_emptyIcon, 0, Qt::AlignHCenter);
    for (QLabel *label : {m_emptyHeading, m_emptyText}) {
        label->setAlignment(Qt::AlignHCenter);
        label->setWordWrap(true);
        column->addWidget(label);
    }
    column->addStretch(3);
    auto *overTable = new QVBoxLayout(m_tableView);
    overTable->setContentsMargins({});
    overTable->addWidget(m_empty);
    m_empty->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void ZLPostListView::makeSyncFailure()
{
    m_syncFailure = new QFrame(this);
    m_syncFailure->setBackgroundRole(QPalette::Window);
    m_syncFailure->setAutoFillBackground(true);
    m_syncFailureText = ZLPlainText::label(m_syncFailure);
    m_syncFailureText->setObjectName(u"syncFailureText"_qs);
    m_syncFailureText->setWordWrap(true);
    m_syncFailureText->setFont(ZLTheme::font(font(), -1));
    m_syncFailureText->setForegroundRole(QPalette::PlaceholderText);
    QPushButton *again = m_tryAgain = new QPushButton(tr("Try Again"), m_syncFailure);
    again->setObjectName(u"tryAgainButton"_qs);
    again->setFlat(true);
    again->setFont(m_syncFailureText->font());
    again->setFixedSize(again->fontMetrics().horizontalAdvance(again->text()) + 3 * ZLTheme::spacing, 28);
    connect(again, &QPushButton::clicked, this, &ZLPostListView::tryAgainPressed);
    auto *row = new QHBoxLayout(m_syncFailure);
    row->setContentsMargins(2 * ZLTheme::spacing, ZLTheme::spacing, ZLTheme::spacing / 2, ZLTheme::spacing);
    row->setSpacing(ZLTheme::spacing);
    row->addWidget(m_syncFailureText, 1);
    row->addWidget(again);
    m_syncFailure->hide();
    layout()->addWidget(m_syncFailure);
}

void ZLPostListView::setSyncFailure(const QString &text)
{
    constexpr int longest = 260; // what a blog says can be a page long
    const qsizetype end = text.size() > longest ? text.lastIndexOf(u' ', longest) : text.size();
    m_syncFailureText->setText(end < text.size() ? text.left(end > 0 ? end : longest) + u'…' : text);
    m_syncFailureText->setToolTip(ZLPlainText::toolTip(text));
    if (text.isEmpty() && window()->focusWidget() == m_tryAgain)
        m_tableView->setFocus(Qt::OtherFocusReason);
    m_syncFailure->setVisible(!text.isEmpty());
}

void ZLPostListView::setLoading(bool loading)
{
    m_isLoading = loading;
    updateEmptyState();
}

void ZLPostListView::updateEmptyState()
{
    const bool empty = m_tableView->model()->rowCount() == 0;
    m_empty->setVisible(empty);
    if (!empty) {
        m_loading->stopAnimation();
        return;
    }
    const bool searching = !m_searchPostsField->text().isEmpty() && !m_isLoading;
    m_loading->setVisible(m_isLoading);
    m_emptyIcon->setVisible(!m_isLoading);
    if (m_isLoading)
        m_loading->startAnimation();
    else
        m_loading->stopAnimation();
    m_emptyIcon->setIcon(searching ? u"postlist_no_matches"_qs : u"postlist_empty"_qs, ZLTheme::secondaryText);
    m_emptyHeading->setText(m_isLoading ? tr("Fetching your posts")
            : searching                 ? tr("No matches")
                                        : tr("No posts yet"));
    m_emptyText->setText(m_isLoading ? tr("They are here in a moment.")
            : searching              ? tr("No title contains this text.")
                                     : tr("What your blog has, and what you write, appears here."));
}

bool ZLPostListView::didPressKeyInSearchField(int key)
{
    if (key == Qt::Key_Down) {
        m_tableView->setFocus(Qt::ShortcutFocusReason);
        if (m_tableView->selectionModel()->selectedIndexes().isEmpty())
            m_tableView->setCurrentIndex(m_tableView->model()->index(0, 0));
        return true;
    }
    if (key == Qt::Key_Escape && !m_searchPostsField->text().isEmpty()) {
        m_searchPostsField->clear();
        return true;
    }
    return false;
}

bool ZLPostListView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (watched == m_searchPostsField && didPressKeyInSearchField(key))
            return true;
        if (watched == m_tableView && key == Qt::Key_Delete) {
            Q_EMIT deletePressed();
            return true;
        }
        if (watched == m_tableView && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
            Q_EMIT returnPressed();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void ZLPostListView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), ZLTheme::listBackground(palette()));
    painter.fillRect(QRect(width() - 1, 0, 1, height()), ZLTheme::separator(palette()));
}
