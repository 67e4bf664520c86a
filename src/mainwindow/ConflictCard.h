#pragma once

#include "model/ConflictSides.h"

#include <QAbstractButton>

class QVBoxLayout;

/// One of the two versions of a post in conflict, to be chosen: where it is, when it was changed, how it begins, and
/// what the other one has not.
class ConflictCard : public QAbstractButton {
    Q_OBJECT
public:
    ConflictCard(const QString &place, const ConflictSides::Side &side, QWidget *parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void addLines(QVBoxLayout *column, const QStringList &lines, QPalette::ColorRole role);
    QString dateText(const QDateTime &date) const;
};
