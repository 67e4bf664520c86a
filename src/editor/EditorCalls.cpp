#include "editor/EditorCalls.h"

#include <QMetaEnum>
#include <QTimer>

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
    m_heldRequests.clear();
    while (!m_waiting.empty())
        end(m_waiting.begin()->first, std::nullopt);
}

void EditorCalls::hold()
{
    m_held = true;
}

void EditorCalls::release()
{
    m_held = false;
    const auto requests = std::move(m_heldRequests);
    m_heldRequests.clear();
    for (const Request &request : requests)
        send(request, answerLimit);
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
    if (!m_open || !m_held)
        return callNow(function, arguments);
    m_heldRequests.push_back({++m_lastId, function, arguments});
    return wait(m_lastId);
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
    QPromise<Answer> &promise = m_waiting[id];
    promise.start();
    return promise.future();
}

void EditorCalls::answered(int id, const QVariant &value)
{
    end(id, value);
}

void EditorCalls::end(int id, const Answer &answer)
{
    auto waiting = m_waiting.extract(id);
    if (waiting.empty())
        return;
    waiting.mapped().addResult(answer);
    waiting.mapped().finish();
}
