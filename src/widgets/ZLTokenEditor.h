#pragma once

#include <QLineEdit>
#include <functional>

class QStringListModel;

/// The text part of a token field: what is typed until it becomes a token, with completions.
class ZLTokenEditor : public QLineEdit {
    Q_OBJECT
public:
    explicit ZLTokenEditor(QWidget *parent = nullptr);

    /// Asked for the text typed so far; an empty list shows nothing.
    void setCompletions(std::function<QStringList(const QString &)> completions)
    {
        m_completions = std::move(completions);
    }
    void hideCompletions();
    void commit(); ///< makes a token of what stands here
    void reset(); ///< empties it for good

Q_SIGNALS:
    void committed(const QString &token);
    void deletePrevious(); ///< Backspace with nothing before the cursor
    void moveToPrevious();
    void didTakeFocus();

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void textWasEdited(const QString &text);
    void commitText(const QString &text);
    void fitCompletions();
    bool isCompletionChosen() const;

    QStringListModel *m_model;
    std::function<QStringList(const QString &)> m_completions;
};
