#pragma once

#include <QWidget>

/// The bar at the top of the window, right of the side bar. It holds the selector of the current blog.
class ZLTitleBarView : public QWidget {
    Q_OBJECT
public:
    explicit ZLTitleBarView(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};
