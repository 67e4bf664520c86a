#pragma once

#include <QKeySequence>
#include <QToolButton>

/// A flat button that is nothing but an icon; its tool tip is its name for assistive programs as well.
class ZLIconButton : public QToolButton {
    Q_OBJECT
public:
    ZLIconButton(const QString &iconName, const QString &toolTip, QWidget *parent = nullptr);

    void setIconName(const QString &iconName);
    QString iconName() const { return m_iconName; }
    /// The square that the pointer can hit, and the icon in its middle.
    void setSides(int button, int icon);
    void setName(const QString &toolTip);
    void setShortcutHint(const QKeySequence &keys); ///< the tool tip tells it, too

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_iconName;
    QKeySequence m_shortcutHint;
};
