// What the data and calculator tests read back from a document: an experiment made by name, and
// a vector's values and validity as plain lists that gtest compares and prints whole.
#ifndef VYR_TESTS_SUPPORT_VECTORCONTENTS_H
#define VYR_TESTS_SUPPORT_VECTORCONTENTS_H

#include <vector>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrVecteur.h"

namespace vyrtest {

inline VyrExperience* Experience(VyrBaseData& doc, const wxString& name) {
    VyrExperienceParam p(name);
    return doc.CreateExperience(p);
}

inline std::vector<double> Values(const VyrVecteur* v) {
    std::vector<double> values;
    for (int i = 0; i < v->GetSize(); ++i)
        values.push_back((*v)[i]);
    return values;
}

inline std::vector<bool> Validity(const VyrVecteur* v) {
    std::vector<bool> valid;
    for (int i = 0; i < v->GetSize(); ++i)
        valid.push_back(v->IsValidAt(i));
    return valid;
}

}  // namespace vyrtest

#endif
