#pragma once

#include "app/Prompts.h"
#include "widgets/ZLSheet.h"

#include <QFuture>
#include <QPromise>

class ConflictCard;
class QAbstractButton;

/// Asks what becomes of a post that has changed here and on the blog. The arrows go from one version to the other; as
/// long as there is no answer nothing happens to either.
class ConflictSheet : public ZLSheet {
    Q_OBJECT
public:
    explicit ConflictSheet(const ConflictSides &sides);
    ~ConflictSheet() override;

    QFuture<ConflictAnswer> answer() { return m_answer.future(); }

Q_SIGNALS:
    void answered();

protected:
    void didPressEscape() override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void select(ConflictCard *card);
    void finish(ConflictAnswer answer);

    ConflictCard *m_local;
    ConflictCard *m_remote;
    QPromise<ConflictAnswer> m_answer;
};
