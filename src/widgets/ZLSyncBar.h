#pragma once

#include <QWidget>

class QLabel;
class QPropertyAnimation;
class QPushButton;
class ZLSpinner;

/// A notice at the bottom of its parent that slides up while something goes on, with a way to stop it.
class ZLSyncBar : public QWidget {
    Q_OBJECT
public:
    static constexpr int barHeight = 34;

    ZLSyncBar(const QString &text, const QString &stopTitle, QWidget *parent);

    void slideIn();
    void slideOut();
    bool isShowing() const { return m_showing; }

Q_SIGNALS:
    void stopped();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void slideTo(int top);
    int topWhenShown() const;

    ZLSpinner *m_spinner;
    QPropertyAnimation *m_slide;
    bool m_showing = false;
};
