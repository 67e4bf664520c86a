#include "editor/ZLComposeBar.h"

#include "widgets/ZLIconButton.h"
#include "widgets/ZLIcons.h"
#include "widgets/ZLPlainText.h"
#include "widgets/ZLTheme.h"

#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

namespace {
QString toolTipOf(const FormatCommand &format)
{
    return QString::fromLatin1(format.label).remove(u'&');
}
} // namespace

ZLComposeBar::ZLComposeBar(QWidget *parent)
    : QWidget(parent)
    , m_row(new QHBoxLayout(this))
{
    setFixedHeight(48);
    QHBoxLayout *row = m_row;
    row->setContentsMargins(2 * ZLTheme::spacing, 0, 2 * ZLTheme::spacing, 0);
    row->setSpacing(2);
    for (std::size_t index = 0; index < formatCommands.size(); ++index) {
        const FormatCommand &format = formatCommands[index];
        const QString command = QLatin1String(format.command);
        ZLIconButton *button = addFormatButton(QLatin1String(format.icon), toolTipOf(format));
        connect(button, &QAbstractButton::clicked, this, [this, button, command] {
            button->setChecked(!button->isChecked()); // the page says how it is; a click does not
            Q_EMIT didPressedFormatButton(command);
        });
        button->setShortcutHint(QKeySequence(QLatin1String(format.shortcut)));
        m_formatButtons[index] = button;
        row->addWidget(button);
        if (format.endsGroup)
            row->addWidget(makeSeparator());
    }
    m_link = addFormatButton(QStringLiteral("menu_link"), QStringLiteral("Link"));
    m_link->setObjectName(QStringLiteral("linkButton"));
    connect(m_link, &QAbstractButton::clicked, this, [this] {
        m_link->setChecked(!m_link->isChecked());
        Q_EMIT didPressedLinkButton();
    });
    row->addWidget(m_link);
    auto *media = new ZLIconButton(QStringLiteral("editor_insert_media_button"), QStringLiteral("Insert media"), this);
    media->setObjectName(QStringLiteral("insertMediaButton"));
    connect(media, &QAbstractButton::clicked, this, &ZLComposeBar::didPressedInsertMedia);
    row->addWidget(media);

    m_saveState = ZLPlainText::label(this);
    m_saveState->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_saveState->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // it gives way before the buttons do
    m_saveState->setObjectName(QStringLiteral("saveStateLabel"));
    m_saveState->setFont(ZLTheme::font(font(), -1));
    m_saveState->setForegroundRole(QPalette::PlaceholderText);
    row->addWidget(m_saveState, 1);
    row->addSpacing(ZLTheme::spacing);
    m_delete = new ZLIconButton(QStringLiteral("editor_delete_button"), QStringLiteral("Delete post"), this);
    m_delete->setObjectName(QStringLiteral("deleteButton"));
    m_save = new ZLIconButton(QStringLiteral("editor_save_button"), QStringLiteral("Save post"), this);
    m_save->setObjectName(QStringLiteral("saveButton"));
    m_publish = new QPushButton(this);
    m_publish->setObjectName(QStringLiteral("publishButton"));
    m_publish->setDefault(true);
    m_publish->setIconSize({16, 16});
    row->addWidget(m_delete);
    row->addWidget(m_save);
    row->addSpacing(ZLTheme::spacing);
    row->addWidget(m_publish);
    connect(m_delete, &QAbstractButton::clicked, this, &ZLComposeBar::didPressedDeleteButton);
    connect(m_save, &QAbstractButton::clicked, this, &ZLComposeBar::didPressedSaveButton);
    connect(m_publish, &QAbstractButton::clicked, this, &ZLComposeBar::didPressedPublishButton);
    connect(m_publish, &QAbstractButton::pressed, this, &ZLComposeBar::showPublishIcon);
    connect(m_publish, &QAbstractButton::released, this, &ZLComposeBar::showPublishIcon);
}

ZLIconButton *ZLComposeBar::addFormatButton(const QString &icon, const QString &toolTip)
{
    auto *button = new ZLIconButton(icon, toolTip, this);
    button->setCheckable(true);
    // The selection in the page is what the button works on; the menu has the same commands for the keyboard.
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}

QWidget *ZLComposeBar::makeSeparator()
{
    auto *line = new QFrame(this);
    line->setFrameShape(QFrame::VLine);
    line->setFrameShadow(QFrame::Plain);
    line->setForegroundRole(QPalette::Mid);
    line->setFixedSize(2 * ZLTheme::spacing + 1, 20);
    return line;
}

void ZLComposeBar::setButtons(const PostButtons &buttons)
{
    const auto show = [](ZLIconButton *shown, const PostButtons::Button &button) {
        shown->setIconName(button.image);
        shown->setName(button.toolTip);
        shown->setEnabled(button.enabled);
    };
    show(m_save, buttons.save);
    show(m_delete, buttons.remove);
    setPublishButton(buttons.publish);
}

void ZLComposeBar::setPublishButton(const PostButtons::Button &button)
{
    m_publishButton = button;
    m_publish->setText(button.text);
    m_publish->setToolTip(ZLPlainText::toolTip(button.toolTip, m_publishShortcut));
    m_publish->setEnabled(button.enabled);
    showPublishIcon();
    showFormatsThatFit(); // its label may be longer than the last one
}

void ZLComposeBar::setPublishShortcut(const QKeySequence &keys)
{
    m_publishShortcut = keys;
    setPublishButton(m_publishButton);
}

void ZLComposeBar::showPublishIcon()
{
    QPalette onAccent = palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) // disabled, the button is bare
        onAccent.setColor(group, QPalette::ButtonText, palette().color(QPalette::HighlightedText));
    const QString name = m_publish->isDown() ? m_publishButton.alternateImage : m_publishButton.image;
    if (!name.isEmpty())
        m_publish->setIcon(ZLIcons::icon(name, onAccent));
}

void ZLComposeBar::setSelectionStyle(const SelectionStyle &style)
{
    for (std::size_t index = 0; index < formatCommands.size(); ++index)
        m_formatButtons[index]->setChecked(style.*formatCommands[index].isOn);
    m_link->setChecked(style.link);
}

void ZLComposeBar::setSaveState(const QString &text)
{
    m_saveStateText = text;
    showSaveState();
}

void ZLComposeBar::showSaveState()
{
    const bool hasRoom = m_saveState->fontMetrics().horizontalAdvance(m_saveStateText) <= m_saveState->width();
    m_saveState->setText(hasRoom ? m_saveStateText : QString());
}

void ZLComposeBar::showFormatsThatFit()
{
    const int last = m_row->indexOf(m_saveState);
    const QMargins margins = m_row->contentsMargins();
    int room = width() - margins.left() - margins.right();
    for (int index = last + 1; index < m_row->count(); ++index)
        room -= m_row->itemAt(index)->sizeHint().width() + m_row->spacing();
    for (int index = 0; index < last; ++index) {
        QWidget *format = m_row->itemAt(index)->widget();
        room -= format->sizeHint().boundedTo(format->maximumSize()).expandedTo(format->minimumSize()).width()
            + m_row->spacing();
        format->setVisible(room >= 0);
    }
}

QSize ZLComposeBar::minimumSizeHint() const
{
    return {0, height()};
}

void ZLComposeBar::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    showFormatsThatFit();
    layout()->activate();
    showSaveState();
}

void ZLComposeBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.fillRect(QRect(0, height() - 1, width(), 1), ZLTheme::separator(palette()));
}

void ZLComposeBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        showPublishIcon();
}
