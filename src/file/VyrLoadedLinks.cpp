// The links a file may state but the document cannot hold. The rest of the library relies on
// one owner per element: a curve in one experiment, once; a vector in one curve (as its x, its
// y or both); a note in one curve, or the title of a diagram. Deleting an experiment deletes
// its curves, and a curve its vectors and notes, so an element with two owners would be deleted
// twice, or left dangling in its second owner. A file can state anything (an oid listed twice,
// two curves naming one vector), so after every load the first owner in entity-list order keeps
// the element and the later ones lose it.
#include <unordered_set>
#include <vector>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrNote.h"

namespace {

// Keeps in `list` the elements not in `seen` yet, first occurrences only, in their order;
// `remove`/`add` edit the owner's list. Lists without a repeat are left untouched.
template <class Element, class List, class Remove, class Add>
void KeepFirstOwners(const List& list, std::unordered_set<const Element*>& seen, Remove remove,
                     Add add) {
    std::vector<Element*> keep;
    bool dropped = false;
    for (auto* node = list.GetFirst(); node; node = node->GetNext()) {
        Element* element = node->GetData();
        if (seen.insert(element).second)
            keep.push_back(element);
        else
            dropped = true;
    }
    if (!dropped)
        return;
    // Removing the first element each time finds it at once: emptying costs one step per node.
    while (list.GetFirst())
        remove(list.GetFirst()->GetData());
    for (Element* element : keep)
        add(element);
}

}  // namespace

void VyrBaseData::UnshareLoadedLinks() {
    std::unordered_set<const VyrCourbe*> placedCurves;
    wxVyrListEntityNode* node = GetFirstExperienceNode();
    while (node) {
        VyrExperience* e = GetNextExperience(&node);
        KeepFirstOwners<VyrCourbe>(
            e->GetCourbes(), placedCurves, [e](VyrCourbe* c) { e->RemoveCourbe(c); },
            [e](VyrCourbe* c) { e->AddCourbe(c); });
    }

    // A diagram's title belongs to the diagram.
    std::unordered_set<const VyrNote*> placedNotes;
    for (int i = 0; i < 2; ++i)
        if (VyrNote* title = GetDiagramTitle(i))
            placedNotes.insert(title);
    std::unordered_set<const VyrVecteur*> usedVectors;
    node = GetFirstCourbeNode();
    while (node) {
        VyrCourbe* c = GetNextCourbe(&node);
        KeepFirstOwners<VyrNote>(
            c->GetNotes(), placedNotes, [c](VyrNote* n) { c->RemoveNote(n); },
            [c](VyrNote* n) { c->AddNote(n); });
        VyrVecteur* vx = c->GetVx();
        if (vx && !usedVectors.insert(vx).second)
            c->SetVx(nullptr);
        // One vector may be both axes of its own curve.
        VyrVecteur* vy = c->GetVy();
        if (vy && vy != c->GetVx() && !usedVectors.insert(vy).second)
            c->SetVy(nullptr);
    }
}

void VyrBaseData::DropLoadedLinks() {
    // Nothing here allocates: removing a list's first node only frees it.
    wxVyrListEntityNode* node = GetFirstExperienceNode();
    while (node) {
        VyrExperience* e = GetNextExperience(&node);
        while (e->GetCourbes().GetFirst())
            e->RemoveCourbe(e->GetCourbes().GetFirst()->GetData());
    }
    node = GetFirstCourbeNode();
    while (node) {
        VyrCourbe* c = GetNextCourbe(&node);
        while (c->GetNotes().GetFirst())
            c->RemoveNote(c->GetNotes().GetFirst()->GetData());
        c->SetVx(nullptr);
        c->SetVy(nullptr);
    }
}
