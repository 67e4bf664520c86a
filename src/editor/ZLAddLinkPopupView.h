#pragma once

#include "compose/ComposeView.h"
#include "widgets/ZLSheet.h"

class QCheckBox;
class QPushButton;
class ZLTextField;

/// The sheet of a link: its address, its tooltip, and whether it opens in a new window.
class ZLAddLinkPopupView : public ZLSheet {
    Q_OBJECT
public:
    ZLAddLinkPopupView();

    void setLink(const PageLink &link);

Q_SIGNALS:
    void answered(const LinkAnswer &answer);

protected:
    void didPressEscape() override;

private:
    void answer(LinkAnswer::Deed deed);

    ZLTextField *m_url;
    ZLTextField *m_tooltip;
    QCheckBox *m_newWindow;
    QPushButton *m_remove;
};
