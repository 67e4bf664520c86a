#include "widgets/ZLTextField.h"

#include "widgets/ZLPlainText.h"
#include "widgets/ZLTheme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

ZLTextField::ZLTextField(const QString &placeholder, QWidget *parent)
    : QWidget(parent)
    , m_label(ZLPlainText::label(this, placeholder))
    , m_textField(new QLineEdit(this))
{
    m_textField->setPlaceholderText(placeholder);
    m_textField->setAccessibleName(placeholder);
    m_label->setForegroundRole(QPalette::PlaceholderText);
    m_label->setBuddy(m_textField);
    setFocusProxy(m_textField);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(2 * ZLTheme::spacing);
    row->addWidget(m_label);
    row->addWidget(m_textField, 1);
}

QString ZLTextField::stringValue() const
{
    return m_textField->text();
}
void ZLTextField::setStringValue(const QString &text)
{
    m_textField->setText(text);
}

void ZLTextField::setSecure()
{
    m_textField->setEchoMode(QLineEdit::Password);
    m_textField->setInputMethodHints(Qt::ImhHiddenText | Qt::ImhSensitiveData | Qt::ImhNoPredictiveText);
}

void ZLTextField::alignTextFields(const QList<ZLTextField *> &fields)
{
    int widest = 0;
    for (const ZLTextField *field : fields)
        widest = qMax(widest, field->m_label->sizeHint().width());
    for (ZLTextField *field : fields)
        field->m_label->setFixedWidth(widest);
}
