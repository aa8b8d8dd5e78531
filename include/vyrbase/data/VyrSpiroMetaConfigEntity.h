// Metabolism module settings (entity kind 12), section "[Param_SpiroMetaConfig]".
// Its record fields arrive with the file sections that carry them.
#ifndef VYRBASE_DATA_VYRSPIROMETACONFIGENTITY_H
#define VYRBASE_DATA_VYRSPIROMETACONFIGENTITY_H

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrSpiroMetaConfigEntity : public VyrEntity {
public:
    VyrSpiroMetaConfigEntity(int oid, VyrBaseData* base);
    ~VyrSpiroMetaConfigEntity() override;

    int GetKind() const override { return VYR_KIND_SPIRO_META_CONFIG; }
};

#endif
