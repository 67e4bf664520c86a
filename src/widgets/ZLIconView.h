#pragma once

#include <QColor>
#include <QWidget>

/// One icon that follows its palette.
class ZLIconView : public QWidget {
    Q_OBJECT
public:
    using Tone = QColor (*)(const QPalette &);
    /// Without a tone the icon has the one of its name.
    ZLIconView(const QString &iconName, int side, QWidget *parent = nullptr, Tone tone = nullptr);

    void setIcon(const QString &iconName, Tone tone = nullptr);

    QSize sizeHint() const override { return {m_side, m_side}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_iconName;
    int m_side;
    Tone m_tone;
};
