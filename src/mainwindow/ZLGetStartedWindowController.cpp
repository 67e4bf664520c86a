#include "mainwindow/ZLGetStartedWindowController.h"

#include "widgets/ZLPlainText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

ZLGetStartedWindowController::ZLGetStartedWindowController()
    : ZLSheet(480)
{
    setObjectName(u"getStartedPanel"_qs);
    setHeading(tr("Welcome to Zalmo"));
    auto *tips = new QWidget(this);
    auto *column = new QVBoxLayout(tips);
    column->setContentsMargins(0, 2 * ZLTheme::spacing, 0, ZLTheme::spacing);
    column->setSpacing(20);
    addTip(column, u"sheet_write"_qs, tr("Write"),
        tr("Start with a title; the text follows. What you type is kept on this computer as you go."));
    addTip(column, u"sheet_list"_qs, tr("Find your posts"),
        tr("The list at the left has every post and page of your blog. Search it, or open one and carry on."));
    addTip(column, u"sheet_publish"_qs, tr("Publish"),
        tr("Send a post to your blog with one button, pictures included, or keep it there as a draft."));
    addContent(tips);
    QPushButton *done = addButton(tr("Start Writing"));
    done->setObjectName(u"getStartedDoneButton"_qs);
    connect(done, &QPushButton::clicked, this, &ZLGetStartedWindowController::didClickDone);
    setInitialFirstResponder(done);
}

void ZLGetStartedWindowController::addTip(
    QVBoxLayout *column, const QString &icon, const QString &title, const QString &text)
{
    constexpr int iconSide = 24;
    auto *row = new QHBoxLayout;
    row->setSpacing(2 * ZLTheme::spacing);
    auto *image = new ZLIconView(icon, iconSide, this, ZLTheme::accent);
    auto *texts = new QVBoxLayout;
    texts->setSpacing(2);
    QLabel *heading = ZLPlainText::label(this, title);
    heading->setFont(ZLTheme::font(font(), 0, QFont::DemiBold));
    QLabel *body = ZLPlainText::label(this, text);
    body->setWordWrap(true);
    body->setForegroundRole(QPalette::PlaceholderText);
    texts->addWidget(heading);
    texts->addWidget(body);
    row->addWidget(image, 0, Qt::AlignTop);
    row->addLayout(texts, 1);
    column->addLayout(row);
}

void ZLGetStartedWindowController::didPressEscape()
{
    Q_EMIT didClickDone();
}
