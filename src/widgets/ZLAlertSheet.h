#pragma once

#include "widgets/ZLSheet.h"

#include <QFuture>
#include <QPromise>

/// An alert as a sheet: a message, a text, buttons. It answers once and then goes.
class ZLAlertSheet : public ZLSheet {
    Q_OBJECT
public:
    ZLAlertSheet(
        const QString &message, const QString &informativeText, const QStringList &buttons, int defaultButton = 0);
    ~ZLAlertSheet() override;

    bool isAlert() const override { return true; }
    /// The index of the button pressed, or -1 when the alert went without an answer.
    QFuture<int> answer() { return m_answer.future(); }

Q_SIGNALS:
    void answered(int index);

protected:
    void didPressEscape() override;

private:
    void finish(int index);

    QPromise<int> m_answer;
    int m_escapeIndex = 0;
    bool m_done = false;
};
