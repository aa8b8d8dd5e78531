// Respiration module results (entity kind 10), section "[Param_RespihomData]": name, "type"
// and four texts.
// Values are held by key (see VyrPhysioRecord).
#ifndef VYRBASE_DATA_VYRRESPIHOMDATAENTITY_H
#define VYRBASE_DATA_VYRRESPIHOMDATAENTITY_H

#include "vyrbase/core/VyrExport.h"
#include "vyrbase/data/VyrPhysioRecord.h"

class VYRBASE_API VyrRespihomDataEntity : public VyrPhysioRecord {
public:
    VyrRespihomDataEntity(int oid, VyrBaseData* base);
    VyrRespihomDataEntity(const VyrRespihomDataEntity&) = default;
    VyrRespihomDataEntity& operator=(const VyrRespihomDataEntity&) = default;
    ~VyrRespihomDataEntity() override;

    int GetKind() const override { return VYR_KIND_RESPIHOM_DATA; }
};

#endif
