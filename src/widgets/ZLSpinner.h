#pragma once

#include <QBasicTimer>
#include <QWidget>

/// A turning ring that says "wait". It runs a timer only while it turns and is visible.
class ZLSpinner : public QWidget {
    Q_OBJECT
public:
    explicit ZLSpinner(int side, QWidget *parent = nullptr);

    void startAnimation();
    void stopAnimation();
    bool isAnimating() const { return m_running; }
    QSize sizeHint() const override { return {m_side, m_side}; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void updateTimer();

    QBasicTimer m_timer;
    int m_side;
    int m_angle = 0;
    bool m_running = false;
};
