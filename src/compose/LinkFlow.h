#pragma once

#include "compose/ComposeParts.h"

/// The link sheet, for a new link around the selection or for a link that is there.
class LinkFlow : public QObject {
    Q_OBJECT
public:
    explicit LinkFlow(const ComposeParts &parts, QObject *parent = nullptr);
    QCoro::Task<void> addLinkToCurrentSelection();

private:
    void showSheet(const QString &url, const QString &tooltip, bool newWindow);
    void addLinkDidClickDone(const QString &url, const QString &tooltip, bool newWindow);
    void addLinkDidClickCancel();

    ComposeParts m_parts;
    bool m_isAsking = false; ///< the page for its link
    QString m_shownURL; ///< of the link that the sheet was opened for
};
