// The tools' catalogue of the library's resource texts: installed into the toolkit's
// translations, it answers every key the library looks up, so that no key reaches what the
// tools write; an application's own translations are left alone.
#include <gtest/gtest.h>

#include <wx/translation.h>

#include "MemoryCatalogue.h"
#include "ResourceCatalogue.h"
#include "support/CurveBuilder.h"
#include "support/RecordingDC.h"
#include "support/TranslationScope.h"
#include "vyrbase/core/VyrResourceText.h"
#include "vyrbase/data/VyrDeleteCurveCommand.h"

namespace {

// Every test leaves the process without translations, as it found it.
struct CatalogueFixture : ::testing::Test {
    void SetUp() override { ASSERT_EQ(wxTranslations::Get(), nullptr); }
    void TearDown() override { wxTranslations::Set(nullptr); }
};

}  // namespace

TEST_F(CatalogueFixture, EveryKeyOfTheLibraryHasAnEnglishText) {
    const std::map<std::string, std::string> expected = {{"IDS_EXPERIENCE", "Experiment "},
                                                         {"IDS_EXPERIENCE1", "Experiment 1"},
                                                         {"IDS_MANIPULATION", "Manipulation "},
                                                         {"IDS_MENU_SUPPRIMER", "Delete"},
                                                         {"IDS_SYMB_SECONDE", "s"},
                                                         {"IDS_DAY_HOUR", "d:h"},
                                                         {"IDS_HMIN", "h:min"},
                                                         {"IDS_MINS", "min:s"}};
    EXPECT_EQ(vyrtools::ResourceTexts(), expected);
    // The default experiment is the first one the experiment stem numbers.
    EXPECT_EQ(vyrtools::ResourceTexts().at("IDS_EXPERIENCE") + "1",
              vyrtools::ResourceTexts().at("IDS_EXPERIENCE1"));
}

TEST_F(CatalogueFixture, InstalledTheCatalogueAnswersEveryKey) {
    ASSERT_TRUE(vyrtools::InstallResourceCatalogue());
    for (const auto& entry : vyrtools::ResourceTexts())
        EXPECT_EQ(VyrResourceText::Get(entry.first), wxString::FromUTF8(entry.second.c_str()))
            << entry.first;
    // A key the catalogue does not hold is still its own text.
    EXPECT_EQ(VyrResourceText::Get("IDS_UNKNOWN"), "IDS_UNKNOWN");
}

TEST_F(CatalogueFixture, TheLibraryUsesTheInstalledTexts) {
    ASSERT_TRUE(vyrtools::InstallResourceCatalogue());
    VyrBaseData doc(nullptr);
    EXPECT_EQ(doc.GenerateExperienceName("", false), "Experiment 1");
    EXPECT_EQ(doc.GenerateExperienceName("", true), "Manipulation 1");
    EXPECT_EQ(VyrDeleteCurveCommand(nullptr, nullptr).GetName(), "Delete");
    // A recording of 226,755 s with time labels reads in days and hours.
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* c = AddCurve(doc, e, {"T", L"\u00b0C", "t", "s"}, {{0, 18}, {226755, 24}});
    VyrDiagram* d = ShowInDiagram(doc, 0, {c});
    d->SetTimeLabels(true);
    wxRect rect(0, 0, 401, 301);
    d->Move(rect);
    VyrScale range(0, 226755, -5, 30);
    d->SetManualScale(&range, true);
    RecordingDC dc(wxSize(401, 301));
    d->PaintAxes(&dc);
    EXPECT_NE(dc.FindText("t (d:h)"), nullptr);
    EXPECT_NE(dc.FindText("1:00"), nullptr);
    ASSERT_FALSE(dc.Texts().empty());
    for (const wxString& text : dc.Texts())
        EXPECT_FALSE(text.Contains("IDS_")) << text;
}

TEST_F(CatalogueFixture, AnApplicationsOwnTranslationsAreKept) {
    TranslationScope own(std::map<std::string, std::string>{{"IDS_SYMB_SECONDE", "sec"}});
    ASSERT_TRUE(own.IsLoaded());
    wxTranslations* before = wxTranslations::Get();
    EXPECT_FALSE(vyrtools::InstallResourceCatalogue());
    EXPECT_EQ(wxTranslations::Get(), before);
    EXPECT_EQ(VyrResourceText::Get("IDS_SYMB_SECONDE"), "sec");
    EXPECT_EQ(VyrResourceText::Get("IDS_HMIN"), "IDS_HMIN");
}

TEST_F(CatalogueFixture, ACatalogueInTheKeysDeclaredLanguageWouldNotBeLoaded) {
    // Why the catalogue declares its keys in no language: the toolkit adds a catalogue in the
    // language the keys are declared in (English by default) without loading it.
    auto* translations = new wxTranslations;
    translations->SetLoader(new vyrtools::MemoryCatalogueLoader("d", "en_US", {{"IDS_MINS", "x"}}));
    translations->SetLanguage("en_US");
    wxTranslations::Set(translations);
    EXPECT_TRUE(translations->AddCatalog("d"));
    EXPECT_FALSE(translations->IsLoaded("d"));
    EXPECT_EQ(VyrResourceText::Get("IDS_MINS"), "IDS_MINS");
}

TEST_F(CatalogueFixture, TheLoaderServesItsDomainInItsLanguageAndItsVariants) {
    vyrtools::MemoryCatalogueLoader loader("dom", "en", {{"k", "v"}});
    EXPECT_EQ(loader.GetAvailableTranslations("dom"), wxArrayString(1, wxString("en")));
    EXPECT_TRUE(loader.GetAvailableTranslations("other").empty());
    EXPECT_EQ(loader.LoadCatalog("other", "en"), nullptr);
    EXPECT_EQ(loader.LoadCatalog("dom", "fr"), nullptr);
    // Through the toolkit's translations, which own the catalogues they load.
    for (const char* language : {"en", "en_GB", "en_US.UTF-8"}) {
        auto* translations = new wxTranslations;
        translations->SetLoader(new vyrtools::MemoryCatalogueLoader("dom", "en", {{"k", "v"}}));
        translations->SetLanguage(language);
        wxTranslations::Set(translations);
        EXPECT_TRUE(translations->AddCatalog("dom", wxLANGUAGE_UNKNOWN)) << language;
        EXPECT_TRUE(translations->IsLoaded("dom")) << language;
        EXPECT_EQ(wxGetTranslation("k"), "v") << language;
        EXPECT_EQ(wxGetTranslation("missing"), "missing") << language;
        wxTranslations::Set(nullptr);
    }
}

TEST_F(CatalogueFixture, TextsKeepTheirNonAsciiCharacters) {
    TranslationScope tr(std::map<std::string, std::string>{{"IDS_X",
                                                            "\xc2\xb0"
                                                            "C \xc3\xa9t\xc3\xa9"}});
    ASSERT_TRUE(tr.IsLoaded());
    EXPECT_EQ(VyrResourceText::Get("IDS_X"), wxString(L"\u00b0C \u00e9t\u00e9"));
}
