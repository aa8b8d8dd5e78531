// The texts of the library's resource keys: the application's translation when its catalogue
// has one, else the library's own text, never the bare key.
#include <gtest/gtest.h>

#include "support/TranslationScope.h"
#include "vyrbase/core/VyrResourceText.h"

namespace {

const char* const kKeys[] = {"IDS_EXPERIENCE",     "IDS_EXPERIENCE1",  "IDS_MANIPULATION",
                             "IDS_MENU_SUPPRIMER", "IDS_SYMB_SECONDE", "IDS_DAY_HOUR",
                             "IDS_HMIN",           "IDS_MINS"};

}  // namespace

TEST(VyrResourceText, EveryKeyHasABuiltInTextThatIsNoResourceName) {
    for (const char* key : kKeys) {
        const wxString text = VyrResourceText::Get(key);
        EXPECT_FALSE(text.empty()) << key;
        EXPECT_FALSE(text.Contains("IDS_")) << key << " gives " << text;
        EXPECT_EQ(text, VyrResourceText::BuiltIn(key)) << key;
    }
}

TEST(VyrResourceText, BuiltInTexts) {
    EXPECT_EQ(VyrResourceText::Get("IDS_SYMB_SECONDE"), "s");
    // The unit labels of a time axis read like its "%d:%02d" graduations.
    EXPECT_EQ(VyrResourceText::Get("IDS_DAY_HOUR"), "d:h");
    EXPECT_EQ(VyrResourceText::Get("IDS_HMIN"), "h:min");
    EXPECT_EQ(VyrResourceText::Get("IDS_MINS"), "min:s");
    EXPECT_EQ(VyrResourceText::Get("IDS_MENU_SUPPRIMER"), "Delete");
    // The default experiment's name is the first that the experiment stem numbers.
    EXPECT_EQ(VyrResourceText::Get("IDS_EXPERIENCE1"),
              VyrResourceText::Get("IDS_EXPERIENCE") + "1");
    EXPECT_EQ(VyrResourceText::Get("IDS_EXPERIENCE1"), "Experiment 1");
    EXPECT_EQ(VyrResourceText::Get("IDS_MANIPULATION"), "Manipulation ");
}

TEST(VyrResourceText, TheApplicationsTranslationWins) {
    TranslationScope tr({{"IDS_SYMB_SECONDE", "sec"}, {"IDS_EXPERIENCE1", "Versuch 1"}});
    ASSERT_TRUE(tr.IsLoaded());
    EXPECT_EQ(VyrResourceText::Get("IDS_SYMB_SECONDE"), "sec");
    EXPECT_EQ(VyrResourceText::Get("IDS_EXPERIENCE1"), "Versuch 1");
    // Keys the catalogue leaves out keep the built-in text.
    EXPECT_EQ(VyrResourceText::Get("IDS_HMIN"), "h:min");
    EXPECT_EQ(VyrResourceText::BuiltIn("IDS_SYMB_SECONDE"), "s");
}

TEST(VyrResourceText, AKeyWithoutTextComesBackAsItIs) {
    EXPECT_EQ(VyrResourceText::Get("IDS_UNKNOWN"), "IDS_UNKNOWN");
    EXPECT_EQ(VyrResourceText::BuiltIn("IDS_UNKNOWN"), "");
    EXPECT_EQ(VyrResourceText::Get(""), "");
}
