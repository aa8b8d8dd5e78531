// The written report (entity kind 7), carried in section "[compte_rendu]".
// Its record fields arrive with the file sections that carry them.
#ifndef VYRBASE_DATA_VYRCOMPTERENDU_H
#define VYRBASE_DATA_VYRCOMPTERENDU_H

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrCompteRendu : public VyrEntity {
public:
    VyrCompteRendu(int oid, VyrBaseData* base);
    ~VyrCompteRendu() override;

    int GetKind() const override { return VYR_KIND_COMPTE_RENDU; }
};

#endif
