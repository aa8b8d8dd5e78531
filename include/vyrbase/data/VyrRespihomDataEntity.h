// Respiration module results (entity kind 10), section "[Param_RespihomData]".
// Its record fields arrive with the file sections that carry them.
#ifndef VYRBASE_DATA_VYRRESPIHOMDATAENTITY_H
#define VYRBASE_DATA_VYRRESPIHOMDATAENTITY_H

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrRespihomDataEntity : public VyrEntity {
public:
    VyrRespihomDataEntity(int oid, VyrBaseData* base);
    ~VyrRespihomDataEntity() override;

    int GetKind() const override { return VYR_KIND_RESPIHOM_DATA; }
};

#endif
