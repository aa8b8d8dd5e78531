// A picture of the document (entity kind 16), carried as JPEG in section "[image_Redy]". Its
// name is the entity name.
#ifndef VYRBASE_DATA_VYRIMAGEREDYENTITY_H
#define VYRBASE_DATA_VYRIMAGEREDYENTITY_H

#include <wx/image.h>

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrImageRedyEntity : public VyrEntity {
public:
    VyrImageRedyEntity(int oid, VyrBaseData* base);
    // The picture is shared by reference counting, as the toolkit's images are.
    VyrImageRedyEntity(const VyrImageRedyEntity&) = default;
    VyrImageRedyEntity& operator=(const VyrImageRedyEntity&) = default;
    ~VyrImageRedyEntity() override;

    int GetKind() const override { return VYR_KIND_IMAGE_REDY; }

    // Oid of the experiment the picture belongs to; 0 (none) on construction.
    int GetExperienceOid() const { return m_iExperience; }
    void SetExperienceOid(int oid) { m_iExperience = oid; }
    // The application's placement and encoding codes, carried as they are; 0 on construction.
    int GetPosition() const { return m_iPosition; }
    void SetPosition(int position) { m_iPosition = position; }
    int GetEncoding() const { return m_iEncoding; }
    void SetEncoding(int encoding) { m_iEncoding = encoding; }
    // The picture; not Ok() until one is set or read.
    const wxImage& GetImage() const { return m_image; }
    void SetImage(const wxImage& image) { m_image = image; }

private:
    int m_iExperience = 0;
    int m_iPosition = 0;
    int m_iEncoding = 0;
    wxImage m_image;
};

#endif
