#pragma once

#include <QObject>
#include <QTimer>
#include <memory>
#include <vector>

class QKeyEvent;
class QWidget;

/// Keeps what is typed into a window while its screen changes, and gives it to whatever has the focus then.
class KeyHold : public QObject {
    Q_OBJECT
public:
    explicit KeyHold(QWidget *window);
    ~KeyHold() override;

    void hold();
    void drop(); ///< what was typed was meant for a screen that does not come
    void release(); ///< comes by itself when the change takes longer than a moment

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *m_window;
    QTimer m_limit;
    std::vector<std::unique_ptr<QEvent>> m_keys;
};
