#include "editor/ZLAddLinkPopupView.h"

#include "widgets/ZLTextField.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

ZLAddLinkPopupView::ZLAddLinkPopupView()
    : m_url(new ZLTextField(QStringLiteral("URL"), this))
    , m_tooltip(new ZLTextField(QStringLiteral("Tooltip"), this))
    , m_newWindow(new QCheckBox(QStringLiteral("Open in a new window"), this))
{
    setObjectName(QStringLiteral("addLinkSheet"));
    m_url->textField()->setObjectName(QStringLiteral("linkURLField"));
    m_tooltip->textField()->setObjectName(QStringLiteral("linkTooltipField"));
    setIcon(QStringLiteral("menu_link"));
    setHeading(QStringLiteral("Link"));
    ZLTextField::alignTextFields({m_url, m_tooltip});
    addContent(m_url);
    addContent(m_tooltip);
    addContent(m_newWindow);
    setInitialFirstResponder(m_url->textField());
    QPushButton *done = addButton(QStringLiteral("Done"));
    QPushButton *cancel = addButton(QStringLiteral("Cancel"));
    connect(done, &QPushButton::clicked, this, [this] {
        Q_EMIT didClickDone(m_url->stringValue().trimmed(), m_tooltip->stringValue(), m_newWindow->isChecked());
    });
    connect(cancel, &QPushButton::clicked, this, &ZLAddLinkPopupView::didClickCancel);
    // A link to nowhere helps nobody.
    connect(m_url->textField(), &QLineEdit::textChanged, done,
        [done](const QString &url) { done->setEnabled(!url.trimmed().isEmpty()); });
    done->setEnabled(false);
}

void ZLAddLinkPopupView::setLink(const QString &url, const QString &tooltip, bool newWindow)
{
    m_url->setStringValue(url);
    m_tooltip->setStringValue(tooltip);
    m_newWindow->setChecked(newWindow);
    m_url->textField()->selectAll();
}

void ZLAddLinkPopupView::didPressEscape()
{
    Q_EMIT didClickCancel();
}
