// The parameters of VyrBaseData::CreateCourbe.
#ifndef VYRBASE_DATA_VYRCOURBEPARAM_H
#define VYRBASE_DATA_VYRCOURBEPARAM_H

#include <wx/colour.h>
#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"
#include "vyrbase/data/VyrScale.h"

class VYRBASE_API VyrCourbeParam {
public:
    VyrCourbeParam();
    VyrCourbeParam(const VyrCourbeParam&) = default;
    VyrCourbeParam& operator=(const VyrCourbeParam&) = default;
    virtual ~VyrCourbeParam();

    wxString m_sNom;     // curve name
    wxString m_sNomVx;   // X vector name
    wxString m_sNomVy;   // Y vector name
    wxString m_sUniteX;  // X unit
    wxString m_sUniteY;  // Y unit
    wxString m_sGrdX;    // X quantity name
    wxString m_sGrdY;    // Y quantity name
    wxString m_sText;    // free text
    wxColour m_colour;   // red unless set
    // The caller sets these three; they start at 1 so that a forgotten one draws a plain line.
    int m_iWidth = 1;
    int m_iStylePoint = 1;
    int m_iStyleLiaison = 1;
    // X 0 to 1, Y -1 to 1 unless set.
    VyrScale m_scale;
};

#endif
