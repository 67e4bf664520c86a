#include "mainwindow/ConflictSheet.h"

#include "mainwindow/ConflictCard.h"
#include "widgets/ZLPlainText.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

ConflictSheet::ConflictSheet(const ConflictSides &sides)
    : ZLSheet(560)
{
    m_answer.start();
    setObjectName(u"conflictSheet"_qs);
    setIcon(u"sheet_warning"_qs, ZLTheme::warning);
    setHeading(tr("This post changed here and on the blog"));
    setText(tr("Choose the version that stays. The other one goes, unless you keep both."));
    auto *cards = new QWidget(this);
    auto *row = new QHBoxLayout(cards);
    row->setContentsMargins({});
    row->setSpacing(ZLTheme::spacing);
    m_local = new ConflictCard(tr("On this computer"), sides.local, cards);
    m_remote = new ConflictCard(tr("On the blog"), sides.remote, cards);
    m_local->setObjectName(u"conflictLocalCard"_qs);
    m_remote->setObjectName(u"conflictRemoteCard"_qs);
    auto *group = new QButtonGroup(this);
    for (ConflictCard *card : {m_local, m_remote}) {
        row->addWidget(card, 1);
        group->addButton(card);
    }
    addContent(cards);
    if (!sides.differences.isEmpty()) {
        QLabel *differences = ZLPlainText::label(this, tr("Differs: %1").arg(sides.differences.join(u", ")));
        differences->setFont(ZLTheme::font(font(), -1));
        differences->setForegroundRole(QPalette::PlaceholderText);
        differences->setWordWrap(true);
        addContent(differences);
    }
    QPushButton *choose = addButton(tr("Use This Version"));
    choose->setObjectName(u"conflictChooseButton"_qs);
    connect(choose, &QPushButton::clicked, this,
        [this] { finish(m_local->isChecked() ? ConflictAnswer::ChooseLocal : ConflictAnswer::ChooseRemote); });
    QPushButton *both = addButton(tr("Keep Both"), false);
    both->setObjectName(u"conflictKeepBothButton"_qs);
    both->setEnabled(sides.local.isThere && sides.remote.isThere);
    connect(both, &QPushButton::clicked, this,
        [this] { finish(m_local->isChecked() ? ConflictAnswer::KeepBothLocal : ConflictAnswer::KeepBothRemote); });
    QPushButton *notNow = addButton(tr("Not Now"), false);
    notNow->setObjectName(u"conflictNotNowButton"_qs);
    connect(notNow, &QPushButton::clicked, this, &ConflictSheet::didPressEscape);
    select(sides.local.isThere ? m_local : m_remote);
    setInitialFirstResponder(m_local->isChecked() ? m_local : m_remote);
}

ConflictSheet::~ConflictSheet()
{
    finish(ConflictAnswer::NotNow);
}

void ConflictSheet::select(ConflictCard *card)
{
    card->setChecked(true);
    card->setFocus(Qt::OtherFocusReason);
}

void ConflictSheet::didPressEscape()
{
    finish(ConflictAnswer::NotNow);
}

void ConflictSheet::keyPressEvent(QKeyEvent *event)
{
    const bool isArrow = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
    if (!isArrow || !m_local->isEnabled() || !m_remote->isEnabled())
        return ZLSheet::keyPressEvent(event);
    select((event->key() == Qt::Key_Left) == (layoutDirection() == Qt::LeftToRight) ? m_local : m_remote);
}

void ConflictSheet::finish(ConflictAnswer answer)
{
    if (!m_answer.future().isRunning())
        return;
    m_answer.addResult(answer);
    m_answer.finish();
    Q_EMIT answered();
}
