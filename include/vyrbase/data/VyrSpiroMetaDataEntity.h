// Metabolism module results (entity kind 13), section "[Param_SpiroMetaData]".
// Its record fields arrive with the file sections that carry them.
#ifndef VYRBASE_DATA_VYRSPIROMETADATAENTITY_H
#define VYRBASE_DATA_VYRSPIROMETADATAENTITY_H

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrSpiroMetaDataEntity : public VyrEntity {
public:
    VyrSpiroMetaDataEntity(int oid, VyrBaseData* base);
    ~VyrSpiroMetaDataEntity() override;

    int GetKind() const override { return VYR_KIND_SPIRO_META_DATA; }
};

#endif
