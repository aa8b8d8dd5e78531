// The experiment that holds each curve and each vector, found in one walk of the experiments.
// The section writers name the experiment of every curve and vector they write; asking the
// document for each one (FindExperienceFromCourbe, FindExperienceByVect) walks the experiments
// per entity, a cost of their product: minutes for a table of thousands of columns.
#ifndef VYRBASE_FILE_VYREXPERIENCEOWNERS_H
#define VYRBASE_FILE_VYREXPERIENCEOWNERS_H

#include <unordered_map>

#include "vyrbase/core/VyrExport.h"

class VyrBaseData;
class VyrCourbe;
class VyrExperience;
class VyrVecteur;

// Internal to the library; exported only for the tests.
class VYRBASE_API VyrExperienceOwners {
public:
    // Walks the experiments of `doc` in list order; the document must not change while the
    // answers are used.
    explicit VyrExperienceOwners(VyrBaseData& doc);

    // What FindExperienceFromCourbe answers: the first experiment, in list order, whose curve
    // list holds `curve`; null when none does.
    VyrExperience* OfCourbe(const VyrCourbe* curve) const;
    // What FindExperienceByVect answers: the first experiment, in list order, holding a curve
    // that uses `vector` as X or Y; null when none does.
    VyrExperience* OfVecteur(const VyrVecteur* vector) const;

private:
    std::unordered_map<const VyrCourbe*, VyrExperience*> m_curves;
    std::unordered_map<const VyrVecteur*, VyrExperience*> m_vectors;
};

#endif
