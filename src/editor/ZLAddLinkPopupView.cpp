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
    m_remove = addButton(QStringLiteral("Remove Link"));
    m_remove->setObjectName(QStringLiteral("removeLinkButton"));
    connect(done, &QPushButton::clicked, this, [this] { answer(LinkAnswer::Done); });
    connect(cancel, &QPushButton::clicked, this, [this] { answer(LinkAnswer::Cancel); });
    connect(m_remove, &QPushButton::clicked, this, [this] { answer(LinkAnswer::Remove); });
    // A link to nowhere helps nobody.
    connect(m_url->textField(), &QLineEdit::textChanged, done,
        [done](const QString &url) { done->setEnabled(!url.trimmed().isEmpty()); });
    done->setEnabled(false);
}

void ZLAddLinkPopupView::setLink(const PageLink &link)
{
    m_url->setStringValue(link.url);
    m_tooltip->setStringValue(link.tooltip);
    m_newWindow->setChecked(link.newWindow);
    m_remove->setVisible(link.isLink);
    m_url->textField()->selectAll();
}

void ZLAddLinkPopupView::didPressEscape()
{
    answer(LinkAnswer::Cancel);
}

void ZLAddLinkPopupView::answer(LinkAnswer::Deed deed)
{
    Q_EMIT answered({deed, m_url->stringValue().trimmed(), m_tooltip->stringValue(), m_newWindow->isChecked()});
}
