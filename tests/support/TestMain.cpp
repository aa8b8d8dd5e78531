// Test entry point: starts the toolkit without a display (as CI runs), so painting goes to
// cairo images and translations fall back to their keys.
#include <gtest/gtest.h>

#include <wx/image.h>
#include <wx/init.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    wxInitializer toolkit;
    if (!toolkit.IsOk())
        return 2;
    wxInitAllImageHandlers();
    return RUN_ALL_TESTS();
}
