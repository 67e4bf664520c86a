#pragma once

#include <functional>
#include <memory>
#include <vector>

class QObject;

/// One maker of a test object for each behaviour; main() runs them one by one, with one engine at a time.
std::vector<std::function<std::unique_ptr<QObject>()>> testsOfThePage();
