// A spirometry record (entity kind 11), section "[spirom]": the spirogram values, then the
// subject's and the measurement's ("spacq" 0, "spgarcon" 1 on construction).
// Values are held by key (see VyrPhysioRecord).
#ifndef VYRBASE_DATA_VYRSPIROMENTITY_H
#define VYRBASE_DATA_VYRSPIROMENTITY_H

#include "vyrbase/core/VyrExport.h"
#include "vyrbase/data/VyrPhysioRecord.h"

class VYRBASE_API VyrSpiromEntity : public VyrPhysioRecord {
public:
    VyrSpiromEntity(int oid, VyrBaseData* base);
    VyrSpiromEntity(const VyrSpiromEntity&) = default;
    VyrSpiromEntity& operator=(const VyrSpiromEntity&) = default;
    ~VyrSpiromEntity() override;

    int GetKind() const override { return VYR_KIND_SPIROM; }

    // A flag of the application's spirometry module that the section does not carry; false on
    // construction, lost by a save and load.
    bool GetExtraFlag() const { return m_bExtraFlag; }
    void SetExtraFlag(bool flag) { m_bExtraFlag = flag; }

private:
    bool m_bExtraFlag = false;
};

#endif
