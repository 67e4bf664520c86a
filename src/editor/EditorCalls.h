#pragma once

#include <QFuture>
#include <QObject>
#include <QPromise>
#include <QVariant>
#include <map>
#include <optional>
#include <vector>

/// Calls of the page's functions. Name and arguments cross the channel as data; the page looks the function up in its
/// table and answers by number. Known to the page as `Calls`.
///
/// While closed, calls are answered by nullopt at once; while held, they wait for the release in their order. Keys
/// reach the page by another way, so each call tells how many went before it, and the page runs it behind them.
class EditorCalls : public QObject {
    Q_OBJECT
public:
    using Answer = std::optional<QVariant>;

    using QObject::QObject;
    ~EditorCalls() override;

    void open();
    /// The page is gone: all that wait get nullopt.
    void close();
    void hold();
    void release();

    /// The answer is nullopt when the page goes away or does not answer in time.
    QFuture<Answer> call(const QString &name, const QVariantList &arguments = {});
    /// The same past the hold.
    QFuture<Answer> callNow(const QString &name, const QVariantList &arguments = {});

    void keyWasSent() { ++m_keysSent; } ///< a key was pressed or released in the page

    static constexpr int answerLimitMs = 15'000;

public Q_SLOTS:
    // called by the page
    void answered(int id, const QVariant &value);
    void reportSelectionStyle(const QVariantMap &style);
    void leaveForTitle();
    void leaveForTokens();

Q_SIGNALS:
    void requested(int id, const QString &name, const QVariantList &arguments, int keysBefore);
    void selectionStyleChanged(const QVariantMap &style);
    void focusTitleRequested();
    void focusTokensRequested();

private:
    struct Request {
        int id;
        QString name;
        QVariantList arguments;
    };
    void send(const Request &request);
    void end(int id, const Answer &answer);
    QFuture<Answer> wait(int id);

    int m_lastId = 0;
    int m_keysSent = 0; ///< since the page is there
    bool m_open = false;
    bool m_held = false;
    std::map<int, QPromise<Answer>> m_waiting;
    std::vector<Request> m_heldRequests;
};
