#include "mainwindow/KeyHold.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>

namespace {
constexpr int limitMs = 1000;
}

KeyHold::KeyHold(QWidget *window)
    : QObject(window)
    , m_window(window)
{
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, &KeyHold::release);
}

KeyHold::~KeyHold() = default;

void KeyHold::hold()
{
    m_limit.start(limitMs);
    qApp->installEventFilter(this);
}

void KeyHold::drop()
{
    m_keys.clear();
    release();
}

void KeyHold::release()
{
    m_limit.stop();
    qApp->removeEventFilter(this);
    for (const auto &key : std::exchange(m_keys, {})) {
        if (QWidget *focused = m_window->focusWidget())
            QCoreApplication::sendEvent(focused, key.get());
    }
}

bool KeyHold::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return false;
    if (!event->spontaneous())
        return false; // typed before, and sent on to where it was meant for
    const auto *widget = qobject_cast<QWidget *>(watched);
    if (!widget || widget->window() != m_window)
        return false; // the window's handle hands the key on to a widget
    m_keys.emplace_back(event->clone());
    return true;
}
