#pragma once

#include <QTest>

/// Rows of a test from one text to another.
inline void addTextColumns()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
}

inline void row(const char *name, const QString &text, const QString &expected)
{
    QTest::newRow(name) << text << expected;
}

inline void row(const char *name, const char16_t *text, const char16_t *expected)
{
    row(name, QStringView(text).toString(), QStringView(expected).toString());
}
