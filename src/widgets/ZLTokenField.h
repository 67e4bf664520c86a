#pragma once

#include <QList>
#include <QScrollArea>
#include <QStringList>
#include <functional>

class ZLTokenEditor;
class ZLTokenView;

/// Categories and tags as chips in rows that wrap, and the text of the next one after them. A comma, Return or Tab
/// makes a token of the text; Backspace takes the last one away; the arrows walk through them. Nothing can be dropped
/// here. More than two rows scroll, so that the text of the post keeps its room.
class ZLTokenField : public QScrollArea {
    Q_OBJECT
public:
    explicit ZLTokenField(const QString &placeHolder, QWidget *parent = nullptr);

    /// The tokens, and the text that has not become one yet.
    QStringList tokens() const;
    void setTokens(const QStringList &tokens); ///< the text stays
    void forgetTypedText();
    /// Asked for texts of at least 3 characters.
    void setCompletions(std::function<QStringList(const QString &)> completions);
    void hideCompletions();
    void commit(); ///< makes a token of the text that has not become one yet
    int rowHeight() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override; ///< of the rows that show

Q_SIGNALS:
    void tokensDidChange();
    void didTakeFocus();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    void addToken(const QString &token);
    void insertView(const QString &token);
    void removeView(ZLTokenView *view);
    void editView(ZLTokenView *view);
    void move(ZLTokenView *from, int step);
    void tokensChanged();
    void arrange();
    void bringIntoSight(QWidget *widget);
    int heightOfRows(int rows) const;
    void updatePlaceHolder();
    int layOut(int width, bool apply) const; ///< the number of rows

    QString m_placeHolder;
    QWidget *m_rows;
    ZLTokenEditor *m_editor;
    QList<ZLTokenView *> m_views;
    bool m_isForwarding = false;
};
