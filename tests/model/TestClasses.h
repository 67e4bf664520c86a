#pragma once

#include <QObject>
#include <memory>
#include <vector>

/// The test classes of this program, each made by its own file.
using MakeTest = std::unique_ptr<QObject> (*)();
std::vector<MakeTest> &testClasses();

template <class Test>
struct RegisteredTest {
    RegisteredTest()
    {
        testClasses().push_back([]() -> std::unique_ptr<QObject> { return std::make_unique<Test>(); });
    }
};
