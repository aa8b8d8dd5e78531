// Respiration module settings (entity kind 9), section "[Param_RespihomConfig]": its name and
// "oiddataselected", the oid of the selected data record (-1: none).
// Values are held by key (see VyrPhysioRecord).
#ifndef VYRBASE_DATA_VYRRESPIHOMCONFIGENTITY_H
#define VYRBASE_DATA_VYRRESPIHOMCONFIGENTITY_H

#include "vyrbase/core/VyrExport.h"
#include "vyrbase/data/VyrPhysioRecord.h"

class VYRBASE_API VyrRespihomConfigEntity : public VyrPhysioRecord {
public:
    VyrRespihomConfigEntity(int oid, VyrBaseData* base);
    VyrRespihomConfigEntity(const VyrRespihomConfigEntity&) = default;
    VyrRespihomConfigEntity& operator=(const VyrRespihomConfigEntity&) = default;
    ~VyrRespihomConfigEntity() override;

    int GetKind() const override { return VYR_KIND_RESPIHOM_CONFIG; }
};

#endif
