#include "widgets/ZLAlertSheet.h"

#include "widgets/ZLTheme.h"

#include <QLabel>
#include <QPushButton>

ZLAlertSheet::ZLAlertSheet(const QString &message, const QString &informativeText, const QStringList &buttons)
{
    m_answer.start();
    setIcon(u"sheet_warning"_qs, ZLTheme::warning(palette()));
    // A long message without a second text reads better as text than as a heading of many lines.
    const bool longMessage = informativeText.isEmpty() && message.size() > 80;
    QLabel *shown = longMessage ? setText(message) : setHeading(message);
    shown->setObjectName(u"alertMessage"_qs);
    setAccessibleName(message);
    if (!informativeText.isEmpty())
        setText(informativeText);
    for (int index = 0; index < buttons.size(); ++index) {
        QPushButton *button = addButton(buttons[index]);
        connect(button, &QPushButton::clicked, this, [this, index] { finish(index); });
        if (index == 0)
            setInitialFirstResponder(button);
        if (buttons[index] == u"Cancel")
            m_escapeIndex = index;
    }
}

ZLAlertSheet::~ZLAlertSheet()
{
    if (!m_done)
        m_answer.addResult(-1);
    m_answer.finish();
}

void ZLAlertSheet::didPressEscape()
{
    finish(m_escapeIndex);
}

void ZLAlertSheet::finish(int index)
{
    if (m_done)
        return;
    m_done = true;
    m_answer.addResult(index);
    m_answer.finish();
    Q_EMIT answered(index);
}
