#include "TestPage.h"

#include "TestEditing.h"
#include "TestRoundTrip.h"
#include "TestSafety.h"

std::vector<std::function<std::unique_ptr<QObject>()>> testsOfThePage()
{
    return {
        [] { return std::make_unique<TestRoundTrip>(); },
        [] { return std::make_unique<TestEditing>(); },
        [] { return std::make_unique<TestSafety>(); },
    };
}
