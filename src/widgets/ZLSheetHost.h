#pragma once

#include "widgets/ZLSheet.h"

#include <QPointer>
#include <QVariantAnimation>
#include <QWidget>
#include <functional>

/// The dimmed layer over a window on which its sheets stand, one at a time. While one is up, pointer and focus stay
/// with it. Alerts come first; all else comes in turn, so that no sheet takes the front, and what is being typed, from
/// the one before it.
class ZLSheetHost : public QWidget {
    Q_OBJECT
public:
    explicit ZLSheetHost(QWidget *window);
    ~ZLSheetHost() override;

    /// The room in which sheets are centred.
    void setSheetRect(std::function<QRect()> rect);
    void beginSheet(ZLSheet *sheet); ///< takes it over
    void endSheet(ZLSheet *sheet); ///< hides it; it can be shown again
    ZLSheet *attachedSheet() const { return m_shown; }
    bool isAttached(const ZLSheet *sheet) const { return m_sheets.contains(const_cast<ZLSheet *>(sheet)); }
    /// Whether nothing of the window shows behind the sheets.
    void setHidingWindow(bool hiding);
    /// What has the focus, or gets it back when the last sheet has gone.
    QWidget *focusBehind() const;
    void setFocusBehind(QWidget *widget);
    void layOut();

Q_SIGNALS:
    void attachedSheetChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    ZLSheet *frontSheet() const;
    void showFrontSheet();
    void hideAll();
    void fade(qreal to);
    void didFade(qreal dim);
    void holdFocus(QWidget *now);

    std::function<QRect()> m_rect;
    QList<QPointer<ZLSheet>> m_sheets;
    QPointer<ZLSheet> m_shown;
    QPointer<QWidget> m_focusBefore;
    QVariantAnimation m_fade;
    bool m_isHidingWindow = false;
    qreal m_dim = 0; ///< from 0 to 1
};
