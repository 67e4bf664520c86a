#pragma once

#include <QObject>
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

/// Runs them all; gives the number of failures. A program without windows needs no main() of its own.
int runTests(int argc, char **argv);
