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

/// The table of a test: its columns, and row by row what stands in them.
template <class... Types>
class TestTable {
public:
    explicit TestTable(const std::array<const char *, sizeof...(Types)> &names) { addColumns<Types...>(names); }
    void operator()(const char *row, const Types &...values) const { (QTest::newRow(row) << ... << values); }
};

/// Runs them all; gives the number of failures. A program without windows needs no main() of its own.
int runTests(int argc, char **argv);
