#include <gtest/gtest.h>

#include "diagram/VyrUnitTypeset.h"

TEST(VyrUnitTypeset, PowersBecomeSuperscripts) {
    EXPECT_EQ(VyrTypesetUnit("m/s^2"), L"m/s\u00b2");
    EXPECT_EQ(VyrTypesetUnit("s^-1"), L"s\u207b\u00b9");
    EXPECT_EQ(VyrTypesetUnit("m^3"), L"m\u00b3");
    EXPECT_EQ(VyrTypesetUnit("kg*m^2/s^3"), L"kg*m\u00b2/s\u00b3");
    EXPECT_EQ(VyrTypesetUnit("m^10"), L"m\u00b9\u2070");
}

TEST(VyrUnitTypeset, LeadingUBeforeAUnitSymbolIsMicro) {
    EXPECT_EQ(VyrTypesetUnit("uV"), L"\u00b5V");
    EXPECT_EQ(VyrTypesetUnit("us"), L"\u00b5s");
    EXPECT_EQ(VyrTypesetUnit("uS/cm"), L"\u00b5S/cm");
    EXPECT_EQ(VyrTypesetUnit("V/us"), L"V/\u00b5s");
    EXPECT_EQ(VyrTypesetUnit("umol/L"), L"\u00b5mol/L");
    EXPECT_EQ(VyrTypesetUnit("um^2"), L"\u00b5m\u00b2");
}

TEST(VyrUnitTypeset, OtherUnitsAreShownAsWritten) {
    for (const char* unit :
         {"u.pH", "bpm", "u", "uX", "units", "V", "", "^", "m^", "m^-", "°C", "%", "mus"})
        EXPECT_EQ(VyrTypesetUnit(wxString::FromUTF8(unit)), wxString::FromUTF8(unit)) << unit;
}
