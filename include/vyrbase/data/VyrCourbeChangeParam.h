// The record carried by notification VYR_MSG_CURVE_QUANTITIES_CHANGED (18): a curve, two
// flags and four texts, then two flags and four texts. The constructor stores the second and
// third text of each group exchanged (argument 2 into slot 3, argument 3 into slot 2): kept so
// that the application's senders and readers agree on the slots.
#ifndef VYRBASE_DATA_VYRCOURBECHANGEPARAM_H
#define VYRBASE_DATA_VYRCOURBECHANGEPARAM_H

#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class VyrCourbe;

class VYRBASE_API VyrCourbeChangeParam {
public:
    VyrCourbeChangeParam(VyrCourbe* courbe, bool flag1, bool flag2, const wxString& a1,
                         const wxString& a2, const wxString& a3, const wxString& a4, bool flag3,
                         bool flag4, const wxString& b1, const wxString& b2, const wxString& b3,
                         const wxString& b4);
    // A copy is a construction too: it counts in m_iNum.
    VyrCourbeChangeParam(const VyrCourbeChangeParam& other);
    VyrCourbeChangeParam& operator=(const VyrCourbeChangeParam&) = default;
    virtual ~VyrCourbeChangeParam();

    VyrCourbe* GetCourbe() const { return m_pCourbe; }
    // Flags 0..3 in constructor order (0, 1 of the first group; 2, 3 of the second).
    bool GetFlag(int i) const { return i >= 0 && i < 4 ? m_bFlags[i] : false; }
    // Text slot 0..3 of group 0 or 1 (empty for anything else). Slot 1 holds the constructor's
    // third text of the group and slot 2 its second.
    wxString GetText(int group, int slot) const;

    // How many change records were ever constructed in this process (never decremented).
    static int m_iNum;

private:
    VyrCourbe* m_pCourbe;
    bool m_bFlags[4];
    wxString m_asTexts[2][4];
};

#endif
