#pragma once

#include "model/PostRow.h"

#include <array>
#include <optional>

/// Reads a row from the plain form that the program writes: known elements, each at most once, without attributes,
/// comments and the like. Everything else (and whatever XML forbids) is left to the full reader.
class PostRowScanner {
public:
    explicit PostRowScanner(QByteArrayView data)
        : m_data(data)
    {
    }
    /// Nothing when the full reader has to look.
    std::optional<PostRow> scan();

    // What the walk asks.
    qsizetype takeMark(qsizetype at);
    bool takeTag(qsizetype begin, qsizetype end);

private:
    bool open(QByteArrayView name);
    bool close(QByteArrayView name, QByteArrayView text);
    void store(int element, QByteArrayView text);

    static constexpr int deepest = 4;
    struct Open {
        QByteArrayView name;
        int element = -1;
    };

    QByteArrayView m_data;
    qsizetype m_textBegin = 0; ///< behind the last tag
    PostRow m_row;
    QString m_engine;
    QString m_status;
    std::array<Open, deepest> m_path;
    int m_depth = 0;
    quint32 m_seen = 0; ///< a bit for each element of the table
    bool m_isDone = false;
};
