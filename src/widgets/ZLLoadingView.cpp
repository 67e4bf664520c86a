#include "widgets/ZLLoadingView.h"

#include "widgets/ZLPlainText.h"
#include "widgets/ZLSpinner.h"
#include "widgets/ZLTheme.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
QLabel *addLabel(QVBoxLayout *column, QWidget *card, const QFont &font, QPalette::ColorRole role)
{
    QLabel *label = ZLPlainText::label(card);
    label->setFont(font);
    label->setForegroundRole(role);
    label->setAlignment(Qt::AlignHCenter);
    column->addWidget(label);
    return label;
}
} // namespace

ZLLoadingView::ZLLoadingView(QWidget *parent)
    : ZLCoverView(parent)
{
    QWidget *card = this->card();
    auto *column = new QVBoxLayout(card);
    column->setContentsMargins(40, 32, 40, 24);
    column->setSpacing(ZLTheme::spacing);
    m_spinner = new ZLSpinner(40, card);
    column->addWidget(m_spinner, 0, Qt::AlignHCenter);
    column->addSpacing(ZLTheme::spacing);
    m_heading = addLabel(column, card, ZLTheme::font(font(), 1, QFont::DemiBold), QPalette::Text);
    m_blog = addLabel(column, card, font(), QPalette::PlaceholderText);
    column->addSpacing(ZLTheme::spacing);
    m_progress = new QProgressBar(card);
    m_progress->setRange(0, 1000);
    m_progress->setTextVisible(false);
    m_progress->setFixedHeight(4);
    m_progress->setAccessibleName(QStringLiteral("Upload"));
    QSizePolicy policy = m_progress->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_progress->setSizePolicy(policy);
    column->addWidget(m_progress);
    m_step = addLabel(column, card, font(), QPalette::PlaceholderText);
    m_hint = addLabel(column, card, ZLTheme::font(font(), 0, QFont::DemiBold), QPalette::Text);
    m_hint->setObjectName(QStringLiteral("typingHint"));
    column->addSpacing(ZLTheme::spacing);
    m_cancel = new QPushButton(QStringLiteral("Cancel"), card);
    m_cancel->setObjectName(QStringLiteral("cancelUploadButton"));
    m_cancel->setAutoDefault(false); // Return, pressed once too often, must not give up
    column->addWidget(m_cancel, 0, Qt::AlignHCenter);
    card->setMinimumWidth(320);
    connect(m_cancel, &QPushButton::clicked, this, &ZLLoadingView::didPressCancel);
    // The animation starts with the end of the fade, and ends with the end of the next.
    connect(this, &ZLCoverView::didFadeIn, m_spinner, &ZLSpinner::startAnimation);
    connect(this, &ZLCoverView::didFadeOut, m_spinner, &ZLSpinner::stopAnimation);
    connect(this, &ZLCoverView::didFadeOut, m_hint, &QLabel::clear);
}

void ZLLoadingView::setPostTypeText(const QString &heading)
{
    m_heading->setText(heading);
    setAccessibleName(heading);
    layOut();
}

void ZLLoadingView::setCurrentStatus(const QString &step)
{
    m_step->setText(step);
    layOut();
    // A screen reader reads how the widget with the focus is described, and what an alert says.
    setAccessibleDescription(step);
    QAccessibleEvent said(m_step, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

void ZLLoadingView::setBlogName(const QString &blogName)
{
    m_blog->setText(blogName.isEmpty() ? QString() : QStringLiteral("to '%1'").arg(blogName));
    layOut();
}

void ZLLoadingView::setCanCancel(bool canCancel)
{
    m_cancel->setVisible(canCancel);
    layOut();
}

void ZLLoadingView::keyPressEvent(QKeyEvent *event)
{
    ZLCoverView::keyPressEvent(event);
    if (event->text().isEmpty() || !event->text().front().isPrint() || !m_hint->text().isEmpty())
        return;
    QApplication::beep();
    m_hint->setText(QStringLiteral("What you type now is not taken: the post is covered."));
    layOut();
}

void ZLLoadingView::setProgress(float progress)
{
    m_progress->setVisible(progress > 0 && progress < 1);
    m_progress->setValue(qRound(progress * 1000));
}

void ZLLoadingView::takeFocus()
{
    setFocus(Qt::OtherFocusReason);
}
