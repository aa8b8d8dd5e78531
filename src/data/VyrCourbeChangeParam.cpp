#include "vyrbase/data/VyrCourbeChangeParam.h"

int VyrCourbeChangeParam::m_iNum = 0;

VyrCourbeChangeParam::VyrCourbeChangeParam(VyrCourbe* courbe, bool flag1, bool flag2,
                                           const wxString& a1, const wxString& a2,
                                           const wxString& a3, const wxString& a4, bool flag3,
                                           bool flag4, const wxString& b1, const wxString& b2,
                                           const wxString& b3, const wxString& b4)
    : m_pCourbe(courbe), m_bFlags{flag1, flag2, flag3, flag4} {
    // Kept: the second and third text of each group are stored exchanged; the application's
    // senders and readers agree on these slots.
    m_asTexts[0][0] = a1;
    m_asTexts[0][1] = a3;
    m_asTexts[0][2] = a2;
    m_asTexts[0][3] = a4;
    m_asTexts[1][0] = b1;
    m_asTexts[1][1] = b3;
    m_asTexts[1][2] = b2;
    m_asTexts[1][3] = b4;
    // Counts the change records ever made; nothing decrements it.
    ++m_iNum;
}

VyrCourbeChangeParam::VyrCourbeChangeParam(const VyrCourbeChangeParam& other)
    : m_pCourbe(other.m_pCourbe) {
    for (int i = 0; i < 4; ++i)
        m_bFlags[i] = other.m_bFlags[i];
    for (int g = 0; g < 2; ++g)
        for (int k = 0; k < 4; ++k)
            m_asTexts[g][k] = other.m_asTexts[g][k];
    ++m_iNum;
}

VyrCourbeChangeParam::~VyrCourbeChangeParam() = default;

wxString VyrCourbeChangeParam::GetText(int group, int slot) const {
    if (group < 0 || group > 1 || slot < 0 || slot > 3)
        return wxString();
    return m_asTexts[group][slot];
}
