#pragma once

#include <QTest>
#include <array>
#include <memory>
#include <vector>

/// The test classes of one program, each registered by its own file:
///     static const RegisteredTest<SomeTest> registered;
using MakeTest = std::unique_ptr<QObject> (*)();
std::vector<MakeTest> &testClasses();

template <class Test>
struct RegisteredTest {
    RegisteredTest()
    {
        testClasses().push_back([]() -> std::unique_ptr<QObject> { return std::make_unique<Test>(); });
    }
};

/// The head of a test's table: the types of its columns, and their names in the same order.
template <class... Types>
void addColumns(const std::array<const char *, sizeof...(Types)> &names)
{
    auto name = names.begin();
    (QTest::addColumn<Types>(*name++), ...);
}

/// The names of columns that have none.
inline constexpr const char *columnNames[] = {"first", "second", "third", "fourth", "fifth", "sixth"};

/// The table of a test: its columns, and row by row what stands in them. Columns without names are read by testRow().
template <class... Types>
class TestTable {
public:
    TestTable()
    {
        auto name = std::begin(columnNames);
        (QTest::addColumn<Types>(*name++), ...);
    }
    explicit TestTable(const std::array<const char *, sizeof...(Types)> &names) { addColumns<Types...>(names); }
    void operator()(const char *row, const Types &...values) const { (QTest::newRow(row) << ... << values); }
};

/// The row that a test runs with: const auto [text, size] = testRow<QString, int>();
template <class... Types>
std::tuple<Types...> testRow()
{
    return []<int... Numbers>(std::integer_sequence<int, Numbers...>)
    {
        return std::tuple<Types...>(*static_cast<Types *>(QTest::qData(columnNames[Numbers], qMetaTypeId<Types>()))...);
    }
    (std::make_integer_sequence<int, sizeof...(Types)>());
}

/// Runs them all; gives the number of failures. A program without windows needs no main() of its own.
int runTests(int argc, char **argv);
