// A picture of the document (entity kind 16), carried as JPEG in section "[image_Redy]".
// Its record fields arrive with the file sections that carry them.
#ifndef VYRBASE_DATA_VYRIMAGEREDYENTITY_H
#define VYRBASE_DATA_VYRIMAGEREDYENTITY_H

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrImageRedyEntity : public VyrEntity {
public:
    VyrImageRedyEntity(int oid, VyrBaseData* base);
    ~VyrImageRedyEntity() override;

    int GetKind() const override { return VYR_KIND_IMAGE_REDY; }
};

#endif
