#pragma once

#include "widgets/ZLIconView.h"
#include "widgets/ZLTheme.h"

#include <QFrame>

class QBoxLayout;
class QLabel;
class QPushButton;

/// One sheet: an icon, a heading, a text, whatever the subclass adds, and a row of buttons, the first of which Return
/// presses. It is shown by ZLSheetHost, which keeps the focus inside it.
class ZLSheet : public QFrame {
    Q_OBJECT
public:
    explicit ZLSheet(int width = 420);

    /// An alert stands before every other sheet.
    virtual bool isAlert() const { return false; }
    /// The widget that takes the focus when the sheet comes up.
    QWidget *initialFirstResponder() const { return m_first; }

Q_SIGNALS:
    void orderedOut();

protected:
    void setIcon(const QString &name, ZLIconView::Tone tone = ZLTheme::accent);
    QLabel *setHeading(const QString &text);
    QLabel *setText(const QString &text);
    void addContent(QWidget *widget);
    /// Buttons from the right to the left; the first one is the default button, if it wants to be.
    QPushButton *addButton(const QString &title, bool canBeDefault = true);
    void setInitialFirstResponder(QWidget *widget) { m_first = widget; }

    virtual void didPressReturn(); ///< clicks the default button
    virtual void didPressEscape() { }

    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QLabel *addLabel(int step);

    QBoxLayout *m_column;
    QBoxLayout *m_head;
    QBoxLayout *m_contents;
    QBoxLayout *m_buttons;
    ZLIconView *m_icon = nullptr;
    QLabel *m_heading = nullptr;
    QLabel *m_text = nullptr;
    QPushButton *m_default = nullptr;
    QWidget *m_first = nullptr;
};
