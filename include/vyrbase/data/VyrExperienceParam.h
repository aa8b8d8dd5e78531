// The parameters of VyrBaseData::CreateExperience.
#ifndef VYRBASE_DATA_VYREXPERIENCEPARAM_H
#define VYRBASE_DATA_VYREXPERIENCEPARAM_H

#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrExperienceParam {
public:
    VyrExperienceParam() = default;
    explicit VyrExperienceParam(const wxString& name) : m_sNom(name) {}
    VyrExperienceParam(const VyrExperienceParam&) = default;
    VyrExperienceParam& operator=(const VyrExperienceParam&) = default;
    virtual ~VyrExperienceParam();

    wxString m_sNom;  // the experiment name
};

#endif
