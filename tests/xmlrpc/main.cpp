#include <QCoreApplication>
#include <QLoggingCategory>

int runBase64Test(int argc, char **argv);
int runConnectionTest(int argc, char **argv);
int runEncoderTest(int argc, char **argv);
int runHostileRepliesTest(int argc, char **argv);
int runResponseTest(int argc, char **argv);
int runValueTest(int argc, char **argv);

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    // Thousands of broken replies are thousands of lines.
    QLoggingCategory::setFilterRules(QStringLiteral("zalmo.info=false"));
    int failures = 0;
    for (const auto run :
        {runBase64Test, runConnectionTest, runEncoderTest, runHostileRepliesTest, runResponseTest, runValueTest})
        failures += run(argc, argv);
    return failures;
}
