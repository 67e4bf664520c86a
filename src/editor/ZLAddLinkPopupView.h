#pragma once

#include "widgets/ZLSheet.h"

class QCheckBox;
class ZLTextField;

/// The sheet of a link: its address, its tooltip, and whether it opens in a new window.
class ZLAddLinkPopupView : public ZLSheet {
    Q_OBJECT
public:
    ZLAddLinkPopupView();

    void setLink(const QString &url, const QString &tooltip, bool newWindow);

Q_SIGNALS:
    void didClickDone(const QString &url, const QString &tooltip, bool newWindow);
    void didClickCancel();

protected:
    void didPressEscape() override;

private:
    ZLTextField *m_url;
    ZLTextField *m_tooltip;
    QCheckBox *m_newWindow;
};
