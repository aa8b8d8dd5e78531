// The texts of the library's resource keys: the application's translation when one of its
// catalogues has one, else the key itself.
#include <gtest/gtest.h>

#include "support/TranslationScope.h"
#include "vyrbase/core/VyrResourceText.h"

namespace {

const char* const kKeys[] = {"IDS_EXPERIENCE",     "IDS_EXPERIENCE1",  "IDS_MANIPULATION",
                             "IDS_MENU_SUPPRIMER", "IDS_SYMB_SECONDE", "IDS_DAY_HOUR",
                             "IDS_HMIN",           "IDS_MINS"};

}  // namespace

TEST(VyrResourceText, WithoutTranslationsEveryKeyIsItsOwnText) {
    ASSERT_EQ(wxTranslations::Get(), nullptr);
    for (const char* key : kKeys)
        EXPECT_EQ(VyrResourceText::Get(key), key);
    EXPECT_EQ(VyrResourceText::Get(""), "");
}

TEST(VyrResourceText, TheApplicationsCatalogueAnswersTheKeysItTranslates) {
    TranslationScope tr(
        {{"IDS_SYMB_SECONDE", "sec"}, {"IDS_EXPERIENCE1", "Versuch 1"}, {"IDS_DAY_HOUR", "j:h"}});
    ASSERT_TRUE(tr.IsLoaded());
    EXPECT_EQ(VyrResourceText::Get("IDS_SYMB_SECONDE"), "sec");
    EXPECT_EQ(VyrResourceText::Get("IDS_EXPERIENCE1"), "Versuch 1");
    EXPECT_EQ(VyrResourceText::Get("IDS_DAY_HOUR"), "j:h");
    // A key the catalogue leaves out is its own text: the library adds none of its own.
    EXPECT_EQ(VyrResourceText::Get("IDS_HMIN"), "IDS_HMIN");
    EXPECT_EQ(VyrResourceText::Get("IDS_MENU_SUPPRIMER"), "IDS_MENU_SUPPRIMER");
}

TEST(VyrResourceText, TextsFollowTheTranslationsInstalledNow) {
    {
        TranslationScope tr(std::map<std::string, std::string>{{"IDS_MINS", "min:s"}});
        ASSERT_TRUE(tr.IsLoaded());
        EXPECT_EQ(VyrResourceText::Get("IDS_MINS"), "min:s");
    }
    EXPECT_EQ(VyrResourceText::Get("IDS_MINS"), "IDS_MINS");
}
