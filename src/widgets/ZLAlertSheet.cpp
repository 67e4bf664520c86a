#include "widgets/ZLAlertSheet.h"

#include "platform/ZLLog.h"
#include "widgets/ZLTheme.h"

#include <QLabel>
#include <QPushButton>

namespace {
/// What a blog says can be a page long. The sheet shows its beginning, the log has it all.
QString shownText(const QString &text)
{
    constexpr int longest = 600;
    if (text.size() <= longest)
        return text;
    ZLLog(text);
    return text.left(longest - 1) + u'…';
}
} // namespace

ZLAlertSheet::ZLAlertSheet(
    const QString &message, const QString &informativeText, const QStringList &buttons, int defaultButton)
{
    m_answer.start();
    setIcon(u"sheet_warning"_qs, ZLTheme::warning);
    // A long message without a second text reads better as text than as a heading of many lines.
    const bool longMessage = informativeText.isEmpty() && message.size() > 80;
    const QString text = shownText(message);
    QLabel *shown = longMessage ? setText(text) : setHeading(text);
    shown->setObjectName(u"alertMessage"_qs);
    setAccessibleName(text);
    if (!informativeText.isEmpty())
        setText(shownText(informativeText));
    for (int index = 0; index < buttons.size(); ++index) {
        QPushButton *button = addButton(buttons[index], index == defaultButton);
        connect(button, &QPushButton::clicked, this, [this, index] { finish(index); });
        if (index == defaultButton)
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
