#pragma once

#include <QWidget>

class QVariantAnimation;

/// A veil over its parent with a card in the middle, which fades in and out.
class ZLCoverView : public QWidget {
    Q_OBJECT
public:
    explicit ZLCoverView(QWidget *parent);

    void fadeIn();
    void fadeOut();
    bool isShowing() const { return m_isShowing; }

Q_SIGNALS:
    void didFadeIn();
    void didFadeOut();

protected:
    QWidget *card() const { return m_card; }
    virtual void didPressEscape() { }
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void layOut();

private:
    void setStrength(qreal strength);

    QWidget *m_card;
    QVariantAnimation *m_fade;
    qreal m_strength = 0;
    bool m_isShowing = false;
};
