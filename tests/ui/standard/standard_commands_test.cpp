// COLOR and LINETYPE from scripts.
#include "tests/editor/editor_fixture.h"

#include "host/ui/script/script_driver.h"
#include "host/ui/script/ui_commands.h"
#include "host/ui/standard/standard_commands.h"

namespace korvex::test {
namespace {

class StandardCommands : public EditorTest {
protected:
    StandardCommands() {
        startUiCommands();
        startStandardCommands();
        setUnattended(true);
    }
};

TEST_F(StandardCommands, SetWhatNewObjectsGet) {
    run(L"COLOR\nPRESS IDC_COLOR_TEXT Ctrl+A\nTYPE IDC_COLOR_TEXT green\nCLICK IDOK\n");
    EXPECT_EQ(variable(L"CECOLOR"), L"\"3\"");
    EXPECT_TRUE(contains(run(L"COLOR\nCLICK IDC_COLOR_TABS True Color\nPRESS IDC_COLOR_RGB Ctrl+A\n"
                             L"TYPE IDC_COLOR_RGB 250,3,2\nCLICK IDOK\n"),
                         L"New objects can have an index color only: 1 is the nearest to 250,3,2."));
    EXPECT_EQ(variable(L"CECOLOR"), L"\"1\"");
    run(L"LINETYPE\nCLICK IDC_LINETYPE_LIST ByBlock\nCLICK IDOK\n");
    EXPECT_EQ(variable(L"CELTYPE"), L"\"ByBlock\"");
    run(L"LINETYPE\nCLICK IDC_LINETYPE_LIST Continuous\nCLICK IDCANCEL\n");
    EXPECT_EQ(variable(L"CELTYPE"), L"\"ByBlock\"");
    EXPECT_EQ(failures, Lines());
}

}  // namespace
}  // namespace korvex::test
