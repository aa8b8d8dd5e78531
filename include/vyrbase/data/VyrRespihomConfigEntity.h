// Respiration module settings (entity kind 9), section "[Param_RespihomConfig]".
// Its record fields arrive with the file sections that carry them.
#ifndef VYRBASE_DATA_VYRRESPIHOMCONFIGENTITY_H
#define VYRBASE_DATA_VYRRESPIHOMCONFIGENTITY_H

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrRespihomConfigEntity : public VyrEntity {
public:
    VyrRespihomConfigEntity(int oid, VyrBaseData* base);
    ~VyrRespihomConfigEntity() override;

    int GetKind() const override { return VYR_KIND_RESPIHOM_CONFIG; }
};

#endif
