// The diagram's recomputation after data changes keeps units and ranges incrementally: a live
// diagram must end every step exactly where a diagram that recomputes everything from scratch
// at every data change ends, send the same messages in the same order, and its vectors must
// answer the same extremes as a walk over their values.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>
#include <vector>

#include "support/CurveBuilder.h"
#include "support/RecordingObserver.h"
#include "support/VyrDiagramTestAccess.h"
#include "vyrbase/core/VyrObserverMsg.h"
#include "vyrbase/data/VyrDeleteCurveCommand.h"
#include "vyrbase/data/VyrUnit.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

// A diagram that follows every data change by the full recomputation, as after a change of
// the curve set.
class FromScratchDiagram : public VyrDiagram {
public:
    FromScratchDiagram(VyrBaseData* base, int index) : VyrDiagram(base, index) {}
    void OnUpdateObserver(VyrObserverMsg& msg) override {
        if (msg.GetMsg() != VYR_MSG_DATA_CHANGED) {
            VyrDiagram::OnUpdateObserver(msg);
            return;
        }
        if (msg.GetParam())
            OnListEntityModified();
        UpdateAllObservers(msg);
    }
};

bool SameBits(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

void WalkExtremes(const VyrVecteur& v, double& lo, double& hi) {
    lo = hi = 0.0;
    const double* values = v.GetArea();
    if (!values || v.GetSize() < 1)
        return;
    lo = hi = values[0];
    for (int i = 1; i < v.GetSize(); ++i) {
        lo = values[i] < lo ? values[i] : lo;
        hi = values[i] > hi ? values[i] : hi;
    }
}

// Every range, unit and transform the two diagrams hold, compared to the bit; empty when equal.
std::string Differences(VyrDiagram& live, VyrDiagram& scratch) {
    std::ostringstream out;
    auto scale = [&](const char* what, const VyrScale& a, const VyrScale& b) {
        if (!SameBits(a.GetXmin(), b.GetXmin()) || !SameBits(a.GetXmax(), b.GetXmax()) ||
            !SameBits(a.GetYmin(), b.GetYmin()) || !SameBits(a.GetYmax(), b.GetYmax()))
            out << what << " " << a.GetXmin() << " " << a.GetXmax() << " " << a.GetYmin() << " "
                << a.GetYmax() << " vs " << b.GetXmin() << " " << b.GetXmax() << " " << b.GetYmin()
                << " " << b.GetYmax() << "; ";
    };
    for (int t = 0; t < 3; ++t)
        scale("scale", *live.GetScale(t), *scratch.GetScale(t));
    scale("current", *live.GetCurrentScale(), *scratch.GetCurrentScale());
    if (live.GetTypeScale() != scratch.GetTypeScale())
        out << "type; ";
    if (live.GetUx() != scratch.GetUx() || live.GetUy() != scratch.GetUy() ||
        live.GetGrdX() != scratch.GetGrdX())
        out << "units " << live.GetUx() << "/" << live.GetUy() << " vs " << scratch.GetUx() << "/"
            << scratch.GetUy() << "; ";
    if (live.GetAllUnits() != scratch.GetAllUnits() || live.GetYUnits() != scratch.GetYUnits())
        out << "unit lists; ";
    for (const wxString& unit : live.GetAllUnits()) {
        for (bool onX : {true, false}) {
            const VyrUnit* a = onX ? live.FindUnitX(unit) : live.FindUnitY(unit);
            const VyrUnit* b = onX ? scratch.FindUnitX(unit) : scratch.FindUnitY(unit);
            if (!a || !b) {
                if (a != b)
                    out << "record of " << unit << "; ";
                continue;
            }
            for (int t = 0; t < 3; ++t)
                if (!SameBits(a->GetMin(t), b->GetMin(t)) || !SameBits(a->GetMax(t), b->GetMax(t)))
                    out << "range " << t << " of " << unit << (onX ? " (X)" : " (Y)") << "; ";
        }
    }
    if (!SameBits(VyrDiagramTestAccess::Ax(live), VyrDiagramTestAccess::Ax(scratch)) ||
        !SameBits(VyrDiagramTestAccess::Bx(live), VyrDiagramTestAccess::Bx(scratch)) ||
        !SameBits(VyrDiagramTestAccess::Ay(live), VyrDiagramTestAccess::Ay(scratch)) ||
        !SameBits(VyrDiagramTestAccess::By(live), VyrDiagramTestAccess::By(scratch)))
        out << "transform; ";
    return out.str();
}

double DrawValue(std::mt19937& rng) {
    const int pick = static_cast<int>(rng() % 40);
    if (pick == 0)
        return 0.0;
    if (pick == 1)
        return -0.0;
    if (pick == 2)
        return std::numeric_limits<double>::quiet_NaN();
    if (pick < 6)
        return static_cast<double>(static_cast<int>(rng() % 2001) - 1000) / 8.0;
    return static_cast<double>(static_cast<int>(rng() % 41) - 20) / 4.0;
}

}  // namespace

TEST(VyrDiagramRecompute, RandomEditsEndWhereFullRecomputationEnds) {
    std::mt19937 rng(2025);
    for (int round = 0; round < 12; ++round) {
        VyrBaseData doc(nullptr);
        VyrExperience* e = AddExperience(doc, "E1");
        VyrCourbe* u = AddCurve(doc, e, {"U", "V", "t", "s"}, {{0, 1}, {1, 3}});
        VyrCourbe* i = AddCurve(doc, e, {"I", "A", "t", "s"}, {{0, -2}, {2, 5}});
        VyrCourbe* p = AddCurve(doc, e, {"P", "W", "f", "Hz"}, {{10, 4}});
        std::vector<VyrCourbe*> curves{u, i, p};
        VyrDiagram* live = ShowInDiagram(doc, 0, {u, i, p});
        FromScratchDiagram scratch(&doc, 0);
        wxRect plot(40, 20, 600, 400);
        live->Move(plot);
        scratch.Move(plot);
        RecordingObserver liveViews, scratchViews;
        live->AddObserver(&liveViews);
        scratch.AddObserver(&scratchViews);
        ASSERT_EQ(Differences(*live, scratch), "");

        std::vector<VyrDeleteCurveCommand*> deleted;
        double nextX[3] = {2.0, 3.0, 11.0};
        for (int step = 0; step < 300; ++step) {
            VyrCourbe* c = curves[rng() % curves.size()];
            const int index =
                static_cast<int>(std::find(curves.begin(), curves.end(), c) - curves.begin());
            const int size = c->GetVx()->GetSize();
            const int op = static_cast<int>(rng() % 16);
            if (op <= 4) {
                nextX[index] += (rng() % 4) * 0.5;
                doc.AddPoint(c, nextX[index], DrawValue(rng), true);
            } else if (op <= 6) {
                doc.AddSortPoint(c, static_cast<double>(rng() % 64) / 4.0, DrawValue(rng),
                                 rng() % 2 == 0, true);
            } else if (op == 7 && size > 0) {
                // An edit in place, announced by the application.
                (rng() % 2 ? c->GetVy() : c->GetVx())
                    ->SetVal(static_cast<int>(rng() % size), DrawValue(rng));
                VyrObserverMsg msg(VYR_MSG_DATA_CHANGED, c);
                doc.UpdateAllObservers(msg);
            } else if (op == 8 && size > 0) {
                doc.RemovePointAt(c, static_cast<int>(rng() % size), true);
            } else if (op == 9) {
                doc.ValidePoint(c, rng() % 2 == 0, true);
            } else if (op == 10) {
                if (!deleted.empty() && rng() % 2) {
                    deleted.back()->Undo();
                    delete deleted.back();
                    deleted.pop_back();
                } else if (deleted.size() < 2 && std::none_of(deleted.begin(), deleted.end(),
                                                              [c](VyrDeleteCurveCommand* d) {
                                                                  return d->GetCourbe() == c;
                                                              })) {
                    // A curve is deleted once until its deletion is undone.
                    deleted.push_back(new VyrDeleteCurveCommand(c, e));
                    deleted.back()->Do();
                }
            } else if (op == 11) {
                const int type = static_cast<int>(rng() % 3);
                live->SetTypeScale(type);
                scratch.SetTypeScale(type);
            } else if (op == 12) {
                VyrScale manual(-5.0 + rng() % 3, 20.0, -8.0, 9.0 + rng() % 5);
                live->SetManualScale(&manual, true);
                scratch.SetManualScale(&manual, true);
            } else if (op == 13) {
                c->SetEnabled(!c->IsEnabled());
                doc.AddPoint(c, nextX[index] += 1.0, DrawValue(rng), true);
            } else if (op == 14 && rng() % 4 == 0) {
                // A unit changed behind the diagrams' backs, seen at the next data change.
                c->GetVy()->SetUnite(c->GetVy()->GetUnite() == "V" ? "mV" : "V");
                doc.AddPoint(c, nextX[index] += 1.0, DrawValue(rng), true);
            } else if (op == 15 && rng() % 8 == 0) {
                doc.RazCourbe(c, true);
            }
            ASSERT_EQ(Differences(*live, scratch), "")
                << "round " << round << " step " << step << " op " << op;
            ASSERT_EQ(liveViews.messages.size(), scratchViews.messages.size())
                << "round " << round << " step " << step << " op " << op;
            for (size_t m = 0; m < liveViews.messages.size(); ++m) {
                ASSERT_EQ(liveViews.messages[m].code, scratchViews.messages[m].code);
                const bool ownParam = liveViews.messages[m].param == live;
                ASSERT_EQ(ownParam ? static_cast<void*>(&scratch) : liveViews.messages[m].param,
                          scratchViews.messages[m].param);
            }
            for (VyrCourbe* curve : curves) {
                for (const VyrVecteur* v : {curve->GetVx(), curve->GetVy()}) {
                    double lo, hi;
                    WalkExtremes(*v, lo, hi);
                    ASSERT_TRUE(SameBits(v->GetMin(), lo) && SameBits(v->GetMax(), hi))
                        << "round " << round << " step " << step;
                }
            }
        }
        EXPECT_GT(liveViews.messages.size(), 100u);
        live->RemoveObserver(&liveViews);
        scratch.RemoveObserver(&scratchViews);
        while (!deleted.empty()) {
            deleted.back()->Undo();
            delete deleted.back();
            deleted.pop_back();
        }
    }
}

TEST(VyrDiagramRecompute, UnitChangedBeforeDataChangeIsFollowed) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E1");
    VyrCourbe* u = AddCurve(doc, e, {"U", "V", "t", "s"}, {{0, 1}, {1, 3}});
    VyrDiagram* d = ShowInDiagram(doc, 0, {u});
    doc.AddPoint(u, 2.0, 4.0, true);
    ASSERT_EQ(d->GetUy(), "V");
    u->GetVy()->SetUnite("mV");
    doc.AddPoint(u, 3.0, 5.0, true);
    EXPECT_EQ(d->GetUy(), "mV");
    ASSERT_NE(d->FindUnitY("mV"), nullptr);
    // 1 .. 5 with the 5 % margin.
    EXPECT_DOUBLE_EQ(d->FindUnitY("mV")->GetMax(VYR_SCALE_AUTO), 5.2);
}

// Between appends: quantities and units renamed behind the diagrams' backs (to nothing too),
// the unitless-range option toggled and the main Y unit switched, all of which change what the
// units are made from or change them outside the recomputation.
TEST(VyrDiagramRecompute, RenamesOptionsAndAxisSwitchesEndWhereFullRecomputationEnds) {
    std::mt19937 rng(77);
    int renames = 0, switches = 0;
    for (int round = 0; round < 8; ++round) {
        VyrBaseData doc(nullptr);
        VyrExperience* e = AddExperience(doc, "E1");
        VyrCourbe* u = AddCurve(doc, e, {"U", "V", "t", "s"}, {{0, 1}, {1, 3}});
        VyrCourbe* i = AddCurve(doc, e, {"I", "A", "t", "s"}, {{0, -2}, {2, 5}});
        VyrCourbe* p = AddCurve(doc, e, {"P", "W", "t", "s"}, {{1, 4}});
        std::vector<VyrCourbe*> curves{u, i, p};
        VyrDiagram* live = ShowInDiagram(doc, 0, {u, i, p});
        FromScratchDiagram scratch(&doc, 0);
        wxRect plot(40, 20, 600, 400);
        live->Move(plot);
        scratch.Move(plot);
        RecordingObserver liveViews, scratchViews;
        live->AddObserver(&liveViews);
        scratch.AddObserver(&scratchViews);
        ASSERT_EQ(Differences(*live, scratch), "");

        double nextX = 3.0;
        const wxString xQuantities[] = {"t", "t", "x"};
        const wxString xUnits[] = {"s", "s", "ms", ""};
        const wxString yUnits[] = {"V", "A", "W", "mV", ""};
        for (int step = 0; step < 250; ++step) {
            VyrCourbe* c = curves[rng() % curves.size()];
            const int op = static_cast<int>(rng() % 10);
            if (op <= 3) {
                doc.AddPoint(c, nextX += 0.5, DrawValue(rng), true);
            } else if (op == 4) {
                doc.AddSortPoint(c, static_cast<double>(rng() % 32) / 4.0, DrawValue(rng),
                                 rng() % 2 == 0, true);
            } else if (op == 5) {
                c->GetVx()->SetGrandeur(xQuantities[rng() % 3]);
                doc.AddPoint(c, nextX += 0.5, DrawValue(rng), true);
                ++renames;
            } else if (op == 6) {
                c->GetVx()->SetUnite(xUnits[rng() % 4]);
                doc.AddPoint(c, nextX += 0.5, DrawValue(rng), true);
                ++renames;
            } else if (op == 7) {
                c->GetVy()->SetUnite(yUnits[rng() % 5]);
                doc.AddPoint(c, nextX += 0.5, DrawValue(rng), true);
                ++renames;
            } else if (op == 8) {
                const int options = live->GetOptions() ^ VYR_OPTION_UNITLESS_RANGE;
                live->SetOptions(options);
                scratch.SetOptions(options);
            } else {
                const bool a = live->AxeSuivantY();
                const bool b = scratch.AxeSuivantY();
                ASSERT_EQ(a, b) << "round " << round << " step " << step;
                switches += a ? 1 : 0;
            }
            ASSERT_EQ(Differences(*live, scratch), "")
                << "round " << round << " step " << step << " op " << op;
            ASSERT_EQ(liveViews.messages.size(), scratchViews.messages.size())
                << "round " << round << " step " << step << " op " << op;
            for (size_t m = 0; m < liveViews.messages.size(); ++m)
                ASSERT_EQ(liveViews.messages[m].code, scratchViews.messages[m].code);
        }
        live->RemoveObserver(&liveViews);
        scratch.RemoveObserver(&scratchViews);
    }
    // The sequence did rename and did switch the main Y unit.
    EXPECT_GT(renames, 100);
    EXPECT_GT(switches, 10);
}
