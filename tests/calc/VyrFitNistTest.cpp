// The fit checked against NIST's nonlinear regression reference data sets (tests/data/nist):
// every set from both of its starting points, digits of agreement with the certified values
// counted as the log relative error (LRE) of the worst parameter.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "vyrbase/calc/VyrFit.h"

namespace {

struct ReferenceSet {
    std::string name, model;
    std::vector<double> start[2], certified;
    double rss = 0;
    std::vector<double> x, y;
};

bool ReadSet(const std::string& name, ReferenceSet& set) {
    std::ifstream in(std::string(VYR_TEST_DATA_DIR) + "/nist/" + name + ".txt");
    if (!in)
        return false;
    set.name = name;
    std::string line;
    bool data = false;
    auto numbers = [](std::istringstream& s) {
        std::vector<double> v;
        double d;
        while (s >> d)
            v.push_back(d);
        return v;
    };
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#')
            continue;
        std::istringstream s(line);
        if (data) {
            double x, y;
            if (s >> x >> y) {
                set.x.push_back(x);
                set.y.push_back(y);
            }
            continue;
        }
        std::string key;
        s >> key;
        if (key == "model")
            std::getline(s >> std::ws, set.model);
        else if (key == "start1")
            set.start[0] = numbers(s);
        else if (key == "start2")
            set.start[1] = numbers(s);
        else if (key == "certified")
            set.certified = numbers(s);
        else if (key == "rss")
            s >> set.rss;
        else if (key == "data")
            data = true;
    }
    return !set.model.empty() && !set.x.empty() && set.certified.size() == set.start[0].size();
}

// Digits of agreement, at most the 11 that NIST certifies.
double Lre(double estimate, double certified) {
    const double relative = std::fabs(estimate - certified) / std::fabs(certified);
    return relative == 0 ? 11.0 : std::clamp(-std::log10(relative), 0.0, 11.0);
}

struct FitRun {
    bool converged;
    double lre;  // worst parameter; 0 when not converged
};

FitRun FitFrom(const ReferenceSet& set, int start) {
    VyrFit fit;
    EXPECT_TRUE(fit.SetFormula(set.model)) << fit.GetError();
    EXPECT_EQ(fit.GetParameterCount(), set.certified.size());
    for (size_t k = 0; k < set.certified.size(); ++k)
        EXPECT_TRUE(fit.SetStart(wxString::Format("b%zu", k + 1), set.start[start][k]));
    FitRun run{fit.Fit(set.x.data(), set.y.data(), set.x.size()), 0.0};
    if (!run.converged)
        return run;
    run.lre = 11.0;
    for (size_t k = 0; k < set.certified.size(); ++k) {
        const int i = fit.GetParameterIndex(wxString::Format("b%zu", k + 1));
        run.lre = std::min(run.lre, Lre(fit.GetValue(size_t(i)), set.certified[k]));
    }
    EXPECT_EQ(fit.GetPoints(), set.x.size());
    return run;
}

const char* const kSets[] = {"Misra1a", "Misra1d", "Lanczos1", "Rat42", "MGH10",    "BoxBOD",
                             "MGH17",   "MGH09",   "Thurber",  "Rat43", "Eckerle4", "Bennett5"};

}  // namespace

TEST(VyrFitNist, EveryReferenceSetFromBothStartsReachesSevenDigits) {
    int runs = 0, six = 0, failed = 0;
    double worst = 11.0;
    for (const char* name : kSets) {
        ReferenceSet set;
        ASSERT_TRUE(ReadSet(name, set)) << name;
        for (int start = 0; start < 2; ++start) {
            SCOPED_TRACE(std::string(name) + " start " + std::to_string(start + 1));
            const FitRun run = FitFrom(set, start);
            ++runs;
            failed += run.converged ? 0 : 1;
            six += run.lre >= 6.0 ? 1 : 0;
            worst = std::min(worst, run.lre);
            std::printf("%-9s start %d: %s, %.1f digits\n", name, start + 1,
                        run.converged ? "converged" : "NOT CONVERGED", run.lre);
            EXPECT_TRUE(run.converged);
            EXPECT_GE(run.lre, 7.0);
        }
    }
    std::printf("%d runs of %zu sets: %d reach 6 digits, %d fail, the worst %.1f digits\n", runs,
                sizeof(kSets) / sizeof(kSets[0]), six, failed, worst);
}
