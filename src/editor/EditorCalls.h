#pragma once

#include <QEvent>
#include <QFuture>
#include <QObject>
#include <QPointer>
#include <QPromise>
#include <QVariant>
#include <chrono>
#include <deque>
#include <map>
#include <memory>
#include <optional>

/// The road from the program to the page: calls of the page's functions. Name and arguments cross the channel as data;
/// the page looks the function up in its table and answers by number. Known to the page as `Calls`.
///
/// While closed, calls are answered by nullopt at once; while held, they wait for the release in their order. Keys
/// reach the page by another way, so each call tells how many went before it, and the page runs it behind them. The
/// keys behind a call that changes text or cursor wait for its answer, and all that is called and typed behind them.
class EditorCalls : public QObject {
    Q_OBJECT
public:
    using Answer = std::optional<QVariant>;
    /// The page's functions, by their names in the script contract. The page has one of each name.
    enum class Function {
        loadHTMLContent,
        getBodyContent,
        getRawContent,
        execCommand,
        addImage,
        addLinkMarkToCurrentSelection,
        addLinkToSelection,
        removeLink,
        removeLinkMarkForCurrentSelection,
        removeCurrentSelections,
        cleanUndoStack,
        focusContent,
        setTheme,
    };
    Q_ENUM(Function)

    using QObject::QObject;
    ~EditorCalls() override;

    void open();
    /// The page is gone: all that wait get nullopt.
    void close();
    void hold(); ///< whatever waits for an answer goes out before
    void release();

    /// The answer is nullopt when the page goes away or does not answer in time.
    QFuture<Answer> call(Function function, const QVariantList &arguments = {});
    /// The same past the hold.
    QFuture<Answer> callNow(
        Function function, const QVariantList &arguments = {}, std::chrono::milliseconds limit = answerLimit);

    /// A key or a click for the page, whose input goes to `receiver`. True: it is kept, and will be sent there later.
    bool keepsBack(QObject *receiver, const QEvent &event);
    void focusDidLeave(); ///< what is kept goes to whatever has the focus now

    static constexpr std::chrono::milliseconds answerLimit{15'000};

public Q_SLOTS:
    void answered(int id, const QVariant &value); ///< called by the page

Q_SIGNALS:
    void requested(int id, const QString &name, const QVariantList &arguments, int keysBefore);

private:
    struct Request {
        int id;
        Function function;
        QVariantList arguments;
    };
    /// A call that waits for its turn, or something that was typed.
    struct Waiting {
        Request request;
        QPointer<QObject> receiver;
        std::unique_ptr<QEvent> typed;
    };
    void send(const Request &request, std::chrono::milliseconds limit);
    void sendWaiting();
    void sendAll(); ///< without a wait for answers
    void sendNext();
    void waitForTab();
    void end(int id, const Answer &answer);
    QFuture<Answer> wait(int id);

    int m_lastId = 0;
    int m_keysSent = 0; ///< since the page is there
    bool m_open = false;
    bool m_held = false;
    int m_changing = 0; ///< the call that keys wait for
    bool m_isSendingTyped = false;
    std::map<int, QPromise<Answer>> m_promises;
    std::deque<Waiting> m_queue;
};
