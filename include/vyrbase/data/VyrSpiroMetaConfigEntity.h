// Metabolism module settings (entity kind 12), section "[Param_SpiroMetaConfig]": its name
// and "oiddataselected", the oid of the selected data record (-1: none).
// Values are held by key (see VyrPhysioRecord).
#ifndef VYRBASE_DATA_VYRSPIROMETACONFIGENTITY_H
#define VYRBASE_DATA_VYRSPIROMETACONFIGENTITY_H

#include "vyrbase/core/VyrExport.h"
#include "vyrbase/data/VyrPhysioRecord.h"

class VYRBASE_API VyrSpiroMetaConfigEntity : public VyrPhysioRecord {
public:
    VyrSpiroMetaConfigEntity(int oid, VyrBaseData* base);
    VyrSpiroMetaConfigEntity(const VyrSpiroMetaConfigEntity&) = default;
    VyrSpiroMetaConfigEntity& operator=(const VyrSpiroMetaConfigEntity&) = default;
    ~VyrSpiroMetaConfigEntity() override;

    int GetKind() const override { return VYR_KIND_SPIRO_META_CONFIG; }
};

#endif
