// An experiment (entity kind 1; a "manipulation" in the user's vocabulary): the curves and
// variables of one acquisition. It does not own them: the document does. All comparisons of
// names and units are exact, letter case included.
#ifndef VYRBASE_DATA_VYREXPERIENCE_H
#define VYRBASE_DATA_VYREXPERIENCE_H

#include <wx/string.h>

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"
#include "vyrbase/core/VyrLists.h"

class VyrCourbe;
class VyrVariable;
class VyrVecteur;

class VYRBASE_API VyrExperience : public VyrEntity {
public:
    VyrExperience(int oid, VyrBaseData* base);
    VyrExperience(const VyrExperience&) = default;
    VyrExperience& operator=(const VyrExperience&) = default;
    // Clears both lists without deleting their elements.
    ~VyrExperience() override;

    int GetKind() const override { return VYR_KIND_EXPERIENCE; }

    void AddCourbe(VyrCourbe* c);
    void RemoveCourbe(VyrCourbe* c);
    // The node holding c, or null.
    wxVyrListCourbeNode* FindCourbe(VyrCourbe* c);
    wxVyrListCourbeNode* GetFirstCourbeNode();
    VyrCourbe* GetNextCourbe(wxVyrListCourbeNode** cursor);
    int GetNbCourbe() const;
    // Curves whose deconnected flag is clear.
    int GetNbCourbeConnected() const;
    const VyrListCourbe& GetCourbes() const { return m_listCourbes; }

    void AddVariable(VyrVariable* v);
    void RemoveVariable(VyrVariable* v);
    wxVyrListVariableNode* FindVariable(VyrVariable* v);
    wxVyrListVariableNode* GetFirstVariableNode();
    VyrVariable* GetNextVariable(wxVyrListVariableNode** cursor);
    int GetNbVariable() const;
    const VyrListVariable& GetVariables() const { return m_listVariables; }

    const wxString& GetCommentaire() const { return m_sCommentaire; }
    void SetCommentaire(const wxString& text) { m_sCommentaire = text; }

    // First curve whose entity name equals / ends with the text (null text: null).
    VyrCourbe* FindCourbeByNom(const wchar_t* name);
    VyrCourbe* FindCourbeByEndNom(const wchar_t* suffix);
    // First curve whose X (x true) or Y vector has this quantity name.
    VyrCourbe* FindCourbeByVectNom(const wchar_t* grandeur, bool x);
    // First curve whose X vector has grdX/uniteX and whose Y vector has grdY/uniteY.
    VyrCourbe* FindCourbeByGrd(const wxString& grdY, const wxString& uniteY, const wxString& grdX,
                               const wxString& uniteX);
    // Over the curves in order: the X vector when X matches, else the Y vector when Y matches.
    VyrVecteur* FindVect(const wxString& grandeur, const wxString& unite);

private:
    // The first curve (in list order) for which match(curve) is true, or null.
    template <class Match>
    VyrCourbe* FirstCourbe(Match match);

    VyrListCourbe m_listCourbes;
    VyrListVariable m_listVariables;
    wxString m_sCommentaire;
};

#endif
