#include "editor/EditorCalls.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMetaEnum>
#include <QScopedValueRollback>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <iterator>
#include <vector>

namespace {
bool changesTextOrCursor(EditorCalls::Function function)
{
    using Function = EditorCalls::Function;
    return function != Function::getBodyContent && function != Function::getRawContent;
}

bool isKey(const QEvent &event)
{
    return event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease;
}

bool isTab(const QEvent &event)
{
    if (event.type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<const QKeyEvent &>(event).key();
    return key == Qt::Key_Tab || key == Qt::Key_Backtab;
}
} // namespace

EditorCalls::~EditorCalls()
{
    close();
}

void EditorCalls::open()
{
    m_open = true;
    m_keysSent = 0;
}

void EditorCalls::close()
{
    m_open = false;
    m_held = false;
    m_changing = 0;
    m_queue.clear();
    while (!m_promises.empty())
        end(m_promises.begin()->first, std::nullopt);
}

void EditorCalls::hold()
{
    sendAll();
    m_held = true;
}

void EditorCalls::release()
{
    m_held = false;
    sendWaiting();
}

void EditorCalls::sendWaiting()
{
    while (!m_held && m_changing == 0 && !m_queue.empty())
        sendNext();
}

void EditorCalls::sendAll()
{
    while (!m_held && !m_queue.empty())
        sendNext();
    m_changing = 0;
}

void EditorCalls::sendNext()
{
    const Waiting next = std::move(m_queue.front());
    m_queue.pop_front();
    if (!next.typed) {
        m_changing = changesTextOrCursor(next.request.function) ? next.request.id : m_changing;
        return send(next.request, answerLimit);
    }
    const QScopedValueRollback sending(m_isSendingTyped, true);
    if (next.receiver)
        QCoreApplication::sendEvent(next.receiver, next.typed.get());
}

bool EditorCalls::keepsBack(QObject *receiver, const QEvent &event)
{
    if (m_isSendingTyped || (m_changing == 0 && m_queue.empty())) {
        m_keysSent += isKey(event);
        if (isTab(event) && m_open)
            waitForTab();
        return false;
    }
    m_queue.push_back({{}, receiver, std::unique_ptr<QEvent>(event.clone())});
    return true;
}

/// It may leave the page. This call's answer comes behind the page's word of that.
void EditorCalls::waitForTab()
{
    m_queue.push_front({{++m_lastId, Function::focusContent, {}}, nullptr, nullptr});
    wait(m_lastId);
    if (!m_isSendingTyped)
        sendWaiting();
}

void EditorCalls::focusDidLeave()
{
    const auto firstTyped =
        std::stable_partition(m_queue.begin(), m_queue.end(), [](const Waiting &waiting) { return !waiting.typed; });
    const std::vector<Waiting> typed(std::make_move_iterator(firstTyped), std::make_move_iterator(m_queue.end()));
    m_queue.erase(firstTyped, m_queue.end());
    for (const Waiting &waiting : typed) {
        const bool isText = isKey(*waiting.typed) || waiting.typed->type() == QEvent::InputMethod;
        if (QObject *receiver = isText ? QApplication::focusWidget() : waiting.receiver.data())
            QCoreApplication::sendEvent(receiver, waiting.typed.get());
    }
}

void EditorCalls::send(const Request &request, std::chrono::milliseconds limit)
{
    static const QMetaEnum names = QMetaEnum::fromType<Function>();
    QTimer::singleShot(limit, this, [this, id = request.id] { end(id, std::nullopt); });
    const QString name = QString::fromLatin1(names.valueToKey(int(request.function)));
    Q_EMIT requested(request.id, name, request.arguments, m_keysSent);
}

QFuture<EditorCalls::Answer> EditorCalls::call(Function function, const QVariantList &arguments)
{
    if (!m_open)
        return callNow(function, arguments);
    m_queue.push_back({{++m_lastId, function, arguments}, nullptr, nullptr});
    const QFuture<Answer> answer = wait(m_lastId);
    sendWaiting();
    return answer;
}

QFuture<EditorCalls::Answer> EditorCalls::callNow(
    Function function, const QVariantList &arguments, std::chrono::milliseconds limit)
{
    const Request request{++m_lastId, function, arguments};
    const QFuture<Answer> answer = wait(request.id);
    if (m_open)
        send(request, limit);
    else
        end(request.id, std::nullopt);
    return answer;
}

QFuture<EditorCalls::Answer> EditorCalls::wait(int id)
{
    QPromise<Answer> &promise = m_promises[id];
    promise.start();
    return promise.future();
}

void EditorCalls::answered(int id, const QVariant &value)
{
    end(id, value);
}

void EditorCalls::end(int id, const Answer &answer)
{
    auto waiting = m_promises.extract(id);
    if (waiting.empty())
        return;
    waiting.mapped().addResult(answer);
    waiting.mapped().finish();
    if (id != m_changing)
        return;
    m_changing = 0;
    if (!answer)
        sendAll(); // the page hangs, and nothing is to wait any longer
    sendWaiting();
}
