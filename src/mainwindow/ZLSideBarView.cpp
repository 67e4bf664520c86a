#include "mainwindow/ZLSideBarView.h"

#include "widgets/ZLIconButton.h"
#include "widgets/ZLTheme.h"

#include <QPainter>
#include <QVBoxLayout>

ZLSideBarView::ZLSideBarView(QWidget *parent)
    : QWidget(parent)
    , m_postListButton(new ZLIconButton(u"sidebar_icon_list"_qs, tr("Post list"), this))
    , m_createNewPostButton(new ZLIconButton(u"sidebar_icon_new"_qs, tr("New post"), this))
    , m_importButton(new ZLIconButton(u"sidebar_icon_media"_qs, tr("Insert media"), this))
{
    setFixedWidth(ZLTheme::sideBarWidth);
    m_postListButton->setObjectName(u"postListButton"_qs);
    m_createNewPostButton->setObjectName(u"createNewPostButton"_qs);
    m_importButton->setObjectName(u"importButton"_qs);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, ZLTheme::spacing, 1, ZLTheme::spacing);
    column->setSpacing(ZLTheme::spacing);
    for (ZLIconButton *button : {m_postListButton, m_createNewPostButton, m_importButton}) {
        button->setSides(44, 22);
        column->addWidget(button, 0, Qt::AlignHCenter);
    }
    column->addStretch();
    connect(m_postListButton, &QAbstractButton::clicked, this, &ZLSideBarView::didClickOnPostsList);
    connect(m_createNewPostButton, &QAbstractButton::clicked, this, &ZLSideBarView::didClickOnNewPost);
    connect(m_importButton, &QAbstractButton::clicked, this, &ZLSideBarView::didClickOnImportMedia);
}

void ZLSideBarView::setPostListShown(bool shown)
{
    m_postListButton->setIconName(shown ? u"sidebar_icon_list_on"_qs : u"sidebar_icon_list"_qs);
}

void ZLSideBarView::setButtonsEnabled(bool enabled)
{
    for (ZLIconButton *button : {m_postListButton, m_createNewPostButton, m_importButton})
        button->setEnabled(enabled);
}

void ZLSideBarView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.fillRect(QRect(width() - 1, 0, 1, height()), ZLTheme::separator(palette()));
}
