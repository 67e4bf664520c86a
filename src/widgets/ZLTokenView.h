#pragma once

#include <QWidget>

/// One token: a rounded chip with its text and a cross that takes it away.
class ZLTokenView : public QWidget {
    Q_OBJECT
public:
    explicit ZLTokenView(const QString &token, QWidget *parent = nullptr);

    QString token() const { return m_token; }
    QSize sizeHint() const override;

Q_SIGNALS:
    void removed();
    void editRequested();
    void moveRequested(int step); ///< -1 to the token before, 1 to what follows

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QRect crossRect() const;
    void setOverCross(bool over);

    QString m_token;
    bool m_isOverCross = false;
};
