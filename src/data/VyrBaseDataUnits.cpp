// The document's units table: unit records live only while a file is read or written.
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrUnit.h"
#include "vyrbase/data/VyrVecteur.h"

VyrUnit* VyrBaseData::FindUnit(int unitOid) {
    VyrIntToUnitMap::iterator it = m_mapUnits.find(unitOid);
    return it == m_mapUnits.end() ? nullptr : it->second;
}

int VyrBaseData::FindUnitOid(VyrVecteur* vector) {
    if (!vector)
        return 0;
    VyrIntToIntMap::iterator it = m_mapVectorUnit.find(vector->GetOid());
    return it == m_mapVectorUnit.end() ? 0 : it->second;
}

void VyrBaseData::DeleteUnits() {
    for (VyrIntToUnitMap::iterator it = m_mapUnits.begin(); it != m_mapUnits.end(); ++it) {
        delete it->second;
        it->second = nullptr;
    }
}
