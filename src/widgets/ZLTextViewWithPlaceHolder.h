#pragma once

#include <QTextEdit>

/// The title of a post: plain text without line breaks, as high as its first few lines.
class ZLTextViewWithPlaceHolder : public QTextEdit {
    Q_OBJECT
public:
    explicit ZLTextViewWithPlaceHolder(const QString &placeHolder, QWidget *parent = nullptr);

    /// The text as it was set, to the character, until the user changes it.
    QString string() const;
    /// Of an endless text only the beginning shows, and cannot be edited.
    void setString(const QString &string);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void didTakeFocus();
    void didBeginEditing(); ///< with the first change since the focus came
    void didChange();
    void insertTab(); ///< Tab or Return: on to the text

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;
    bool canInsertFromMimeData(const QMimeData *source) const override;

private:
    void textDidChange();
    int textHeight() const;

    QString m_placeHolder;
    QString m_set;
    bool m_isAsSet = true;
    bool m_isSetting = false;
    bool m_isEditing = false;
};
