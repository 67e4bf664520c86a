#include "editor/EditorCalls.h"

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
        send(request);
}

void EditorCalls::send(const Request &request)
{
    QTimer::singleShot(answerLimitMs, this, [this, id = request.id] { end(id, std::nullopt); });
    Q_EMIT requested(request.id, request.name, request.arguments, m_keysSent);
}

QFuture<EditorCalls::Answer> EditorCalls::call(const QString &name, const QVariantList &arguments)
{
    if (!m_open || !m_held)
        return callNow(name, arguments);
    m_heldRequests.push_back({++m_lastId, name, arguments});
    return wait(m_lastId);
}

QFuture<EditorCalls::Answer> EditorCalls::callNow(const QString &name, const QVariantList &arguments)
{
    const Request request{++m_lastId, name, arguments};
    const QFuture<Answer> answer = wait(request.id);
    if (m_open)
        send(request);
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

void EditorCalls::reportSelectionStyle(const QVariantMap &style)
{
    Q_EMIT selectionStyleChanged(style);
}

void EditorCalls::leaveForTitle()
{
    Q_EMIT focusTitleRequested();
}

void EditorCalls::leaveForTokens()
{
    Q_EMIT focusTokensRequested();
}
