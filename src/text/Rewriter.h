#pragma once

#include <QString>
#include <QStringView>
#include <algorithm>
#include <optional>

/// A text that grows at its end, for passes that put it together out of thousands of small stretches.
class TextBuffer {
public:
    explicit TextBuffer(qsizetype expected)
        : m_text(std::max<qsizetype>(expected, 64), Qt::Uninitialized)
        , m_end(m_text.data())
        , m_limit(m_end + m_text.size())
    {
    }
    TextBuffer(const TextBuffer &) = delete;
    TextBuffer &operator=(const TextBuffer &) = delete;

    void append(QStringView text)
    {
        if (m_limit - m_end < text.size())
            grow(text.size());
        m_end = std::copy(text.begin(), text.end(), m_end);
    }
    void append(QChar c)
    {
        if (m_end == m_limit)
            grow(1);
        *m_end++ = c;
    }
    QStringView text() const { return {m_text.constData(), m_end - m_text.constData()}; }
    void clear() { m_end = m_text.data(); }
    QString take()
    {
        m_text.truncate(m_end - m_text.constData());
        return std::move(m_text);
    }

private:
    void grow(qsizetype by)
    {
        const qsizetype size = m_end - m_text.constData();
        QString larger(size + size / 2 + by, Qt::Uninitialized);
        m_end = std::copy(m_text.constData(), m_text.constData() + size, larger.data());
        m_text.swap(larger);
        m_limit = m_text.constData() + m_text.size();
    }

    QString m_text;
    QChar *m_end;
    const QChar *m_limit;
};

/// A text in the making out of an older one: stretches are replaced from left to right, the rest is copied.
class Rewriter {
public:
    explicit Rewriter(const QString &text)
        : m_text(text)
    {
    }
    template <class... Parts>
    void replace(qsizetype from, qsizetype to, const Parts &...with)
    {
        if (!m_out)
            m_out.emplace(m_text.size() + m_text.size() / 4);
        m_out->append(QStringView(m_text).sliced(m_kept, from - m_kept));
        (m_out->append(with), ...);
        m_kept = to;
    }
    QString result()
    {
        if (!m_out)
            return m_text;
        m_out->append(QStringView(m_text).sliced(m_kept));
        return m_out->take();
    }

private:
    QString m_text;
    std::optional<TextBuffer> m_out; ///< once something is replaced
    qsizetype m_kept = 0;
};
