#include <initializer_list>

int runBodyPiecesTest(int argc, char **argv);
int runContentPassesTest(int argc, char **argv);
int runHTMLEntitiesTest(int argc, char **argv);
int runQueryComponentsTest(int argc, char **argv);
int runSamePassesTest(int argc, char **argv);

int main(int argc, char **argv)
{
    int failures = 0;
    for (const auto run :
        {runBodyPiecesTest, runContentPassesTest, runHTMLEntitiesTest, runQueryComponentsTest, runSamePassesTest})
        failures += run(argc, argv);
    return failures;
}
