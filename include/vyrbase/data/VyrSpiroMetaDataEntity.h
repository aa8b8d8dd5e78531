// Metabolism module results (entity kind 13), section "[Param_SpiroMetaData]": name, "type"
// and three texts.
// Values are held by key (see VyrPhysioRecord).
#ifndef VYRBASE_DATA_VYRSPIROMETADATAENTITY_H
#define VYRBASE_DATA_VYRSPIROMETADATAENTITY_H

#include "vyrbase/core/VyrExport.h"
#include "vyrbase/data/VyrPhysioRecord.h"

class VYRBASE_API VyrSpiroMetaDataEntity : public VyrPhysioRecord {
public:
    VyrSpiroMetaDataEntity(int oid, VyrBaseData* base);
    VyrSpiroMetaDataEntity(const VyrSpiroMetaDataEntity&) = default;
    VyrSpiroMetaDataEntity& operator=(const VyrSpiroMetaDataEntity&) = default;
    ~VyrSpiroMetaDataEntity() override;

    int GetKind() const override { return VYR_KIND_SPIRO_META_DATA; }
};

#endif
