// vyr demo: the sample documents a science class would produce, built through the library's
// public API only, then saved, rendered and exported like any document.
#include <cmath>
#include <functional>
#include <random>

#include <wx/filename.h>
#include <wx/image.h>

#include "CliCommon.h"
#include "Commands.h"
#include "vyrbase/VyrBase.h"

namespace vyr {

namespace {

const double kPi = 3.14159265358979323846;

struct Axis {
    const wchar_t* quantity;
    const wchar_t* unit;
};

// A new curve in `e` with the given quantities and look.
VyrCourbe* NewCurve(VyrBaseData& doc, VyrExperience* e, const wchar_t* name, Axis x, Axis y,
                    const wxColour& colour, int pointStyle, int lineStyle, int width = 1) {
    VyrCourbeParam p;
    p.m_sNom = name;
    p.m_sNomVx = wxString(name) + "VX";
    p.m_sNomVy = wxString(name) + "VY";
    p.m_sGrdX = x.quantity;
    p.m_sUniteX = x.unit;
    p.m_sGrdY = y.quantity;
    p.m_sUniteY = y.unit;
    p.m_colour = colour;
    p.m_iWidth = width;
    p.m_iStylePoint = pointStyle;
    p.m_iStyleLiaison = lineStyle;
    return doc.CreateCourbe(e, p, nullptr, false);
}

VyrExperience* NewExperience(VyrBaseData& doc, const wchar_t* name) {
    VyrExperienceParam p(name);
    return doc.CreateExperience(p);
}

// Samples f at n points from t0 with step dt.
void Sample(VyrBaseData& doc, VyrCourbe* c, int n, double t0, double dt,
            const std::function<double(double)>& f) {
    c->PreAlloc(n);
    for (int i = 0; i < n; ++i) {
        const double t = t0 + i * dt;
        doc.AddPoint(c, t, f(t), false);
    }
}

VyrNote* NoteOn(VyrBaseData& doc, VyrCourbe* c, int index, const wchar_t* text, double dx,
                double dy) {
    VyrNote* note = doc.CreateNoteEntity();
    note->SetType(VYR_NOTE_ANNOTATION);
    note->SetText(text);
    note->SetPointIndex(index);
    note->SetPosition(c->GetVx()->GetVal(index) + dx, c->GetVy()->GetVal(index) + dy);
    c->AddNote(note);
    return note;
}

void Title(VyrBaseData& doc, int diagram, const wchar_t* text) {
    VyrNote* title = doc.CreateNoteEntity();
    title->SetEntityName(L"rectangle_titre");
    title->SetType(VYR_NOTE_TITRE);
    title->SetText(text);
    title->SetPosition(0.30, 0.02);
    doc.GetDiagram(diagram)->SetNoteTitre(title);
}

void Show(VyrBaseData& doc, VyrCourbe* c, int diagram = 0) {
    doc.GetDiagram(diagram)->ShowData(c, true);
}

// A small picture of the kind a class pastes into its document: a colour ramp with a frame.
wxImage Picture(int width, int height) {
    wxImage image(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.SetRGB(x, y, static_cast<unsigned char>(255 * x / width),
                         static_cast<unsigned char>(255 * y / height), 160);
    return image;
}

// A damped oscillation of an RLC circuit: voltage (V) and current (mA) share the zero line.
void BuildOscillation(VyrBaseData& doc) {
    VyrExperience* e = NewExperience(doc, L"RLC circuit");
    VyrCourbe* u = NewCurve(doc, e, L"U", {L"t", L"s"}, {L"U", L"V"}, wxColour(200, 0, 0), 0, 1, 2);
    VyrCourbe* i = NewCurve(doc, e, L"I", {L"t", L"s"}, {L"I", L"mA"}, wxColour(0, 90, 200), 0, 1);
    const double tau = 0.004, w = 2 * kPi * 500;
    Sample(doc, u, 1000, 0.0, 2e-5,
           [&](double t) { return 5.0 * std::exp(-t / tau) * std::cos(w * t); });
    Sample(doc, i, 1000, 0.0, 2e-5,
           [&](double t) { return -30.0 * std::exp(-t / tau) * std::sin(w * t); });
    Show(doc, u);
    Show(doc, i);
    NoteOn(doc, u, 100, L"second maximum", 0.0012, 1.2);
    NoteOn(doc, u, 300, L"damping: 1/e after 4 ms", 0.002, -2.5);
    Title(doc, 0, L"Damped oscillation of an RLC circuit");

    VyrOutilInterval peak(0, nullptr);
    peak.SetEtiq1(L"U max");
    peak.SetAbs(L"s");
    peak.SetOrd(L"V");
    peak.SetPoints(0.002, u->GetVy()->GetVal(100), 0.002, u->GetVy()->GetVal(100));
    doc.AddOutilIntervalEntity(&peak);
    VyrOutilInterval period(0, nullptr);
    period.SetEtiq1(L"T");
    period.SetEtiq2(L"one period");
    period.SetAbs(L"s");
    period.SetOrd(L"V");
    period.SetPoints(0.004, -1.5, 0.006, 1.5);
    doc.AddOutilIntervalEntity(&period);

    VyrCompteRendu* report = doc.GetCompteRenduEntity(true, nullptr);
    report->SetRtf(L"{\\rtf1\\ansi The \"period\" is 2 ms; the voltage decays as e^(-t/4 ms).}");
    VyrGrilleEntity* grid = doc.GetGrilleEntity(true, nullptr);
    grid->SetVersion(1);
    grid->SetData(L"t;U\r\n0;5\r\n0.002;2.97");
    VyrImageRedyEntity* picture = doc.CreateImageRedyEntity(L"set-up");
    picture->SetExperienceOid(e->GetOid());
    picture->SetImage(Picture(160, 120));
    VyrSpiromEntity* spirometry = doc.GetSpiromEntity(true, L"class spirometry");
    spirometry->SetText(L"exp", L"Anna, 15 years");
    spirometry->SetReal(L"vc", 3.9);
    spirometry->SetReal(L"vri", 2.1);
    spirometry->SetReal(L"vre", 1.2);
    spirometry->SetReal(L"fr", 14.0);
    spirometry->SetInt(L"spacq", 1);
    spirometry->SetReal(L"spage", 15.0);
    spirometry->SetReal(L"sptaille", 1.68);
    spirometry->SetInt(L"spgarcon", 0);
}

// A hundred thousand samples of a tuning fork recorded at 44.1 kHz.
void BuildSound(VyrBaseData& doc) {
    VyrExperience* e = NewExperience(doc, L"Sound of a tuning fork");
    VyrCourbe* p = NewCurve(doc, e, L"p", {L"t", L"s"}, {L"p", L"Pa"}, wxColour(30, 120, 30), 0, 1);
    std::mt19937 noise(42);
    std::normal_distribution<double> hiss(0.0, 0.01);
    Sample(doc, p, 100000, 0.0, 1.0 / 44100.0, [&](double t) {
        return std::exp(-t * 0.8) *
                   (0.6 * std::sin(2 * kPi * 440 * t) + 0.2 * std::sin(2 * kPi * 880 * t + 0.3) +
                    0.08 * std::sin(2 * kPi * 1320 * t + 1.1)) +
               hiss(noise);
    });
    Show(doc, p);
    Title(doc, 0, L"Tuning fork, 440 Hz, recorded at 44.1 kHz");
}

// The emission spectrum of hydrogen's Balmer lines, drawn in the colour of each wavelength.
void BuildSpectrum(VyrBaseData& doc) {
    VyrExperience* e = NewExperience(doc, L"Hydrogen lamp");
    VyrCourbe* s =
        NewCurve(doc, e, L"I", {L"lambda", L"nm"}, {L"I", L"%"}, wxColour(0, 0, 0), 0, 4);
    const double lines[][2] = {{410.2, 18}, {434.0, 30}, {486.1, 60}, {656.3, 100}};
    Sample(doc, s, 801, 380.0, 0.5, [&](double lambda) {
        double v = 2.0;
        for (const auto& line : lines)
            v += line[1] * std::exp(-0.5 * std::pow((lambda - line[0]) / 1.2, 2));
        return v;
    });
    Show(doc, s);
    Title(doc, 0, L"Balmer lines of hydrogen");
}

// A pendulum's position and velocity against time, then velocity against position (XY).
void BuildPendulum(VyrBaseData& doc) {
    VyrExperience* e = NewExperience(doc, L"Pendulum");
    VyrCourbe* x = NewCurve(doc, e, L"x", {L"t", L"s"}, {L"x", L"m"}, wxColour(160, 0, 160), 3, 1);
    VyrCourbe* v =
        NewCurve(doc, e, L"v", {L"t", L"s"}, {L"v", L"m/s"}, wxColour(0, 130, 130), 0, 1);
    const double w = 2 * kPi / 1.6, damping = 0.15;
    Sample(doc, x, 400, 0.0, 0.02,
           [&](double t) { return 0.2 * std::exp(-damping * t) * std::cos(w * t); });
    Sample(doc, v, 400, 0.0, 0.02, [&](double t) {
        return -0.2 * std::exp(-damping * t) * (damping * std::cos(w * t) + w * std::sin(w * t));
    });
    Show(doc, x);
    Show(doc, v);
    // Plot against the position: the diagram builds the XY curve v(x), and t(x) (the inverse of
    // the position curve), which a phase portrait does without.
    VyrDiagram* diagram = doc.GetDiagram(0);
    diagram->SetAbscisse(L"x", L"m", x);
    diagram->ShowData(doc.FindCourbe(wxString::Format(L"XY_INVERT_%d", x->GetOid()).wc_str()),
                      false);
    diagram->SetUy(L"m/s");
    Title(doc, 0, L"Phase portrait of a damped pendulum");
}

// A light gate's on/off signal shown as bands, under the light intensity it was cut from.
void BuildSignal(VyrBaseData& doc) {
    VyrExperience* e = NewExperience(doc, L"Light gate");
    VyrCourbe* light =
        NewCurve(doc, e, L"E", {L"t", L"s"}, {L"E", L"lx"}, wxColour(220, 140, 0), 0, 1);
    VyrCourbe* gate =
        NewCurve(doc, e, L"G", {L"t", L"s"}, {L"G", L"s.u."}, wxColour(0, 100, 220), 0, 10);
    auto intensity = [](double t) {
        const double phase = std::fmod(t, 0.5);
        return phase > 0.1 && phase < 0.22 ? 40.0 : 850.0 + 30 * std::sin(40 * t);
    };
    Sample(doc, light, 500, 0.0, 0.004, intensity);
    Sample(doc, gate, 500, 0.0, 0.004, [&](double t) { return intensity(t) < 400 ? 1.0 : 0.0; });
    Show(doc, light);
    Show(doc, gate);
    Title(doc, 0, L"Light gate: a cart passes every 0.5 s");
}

// The RLC circuit's voltage measured with a little noise, and the damped oscillation fitted to
// it: the model drawn over the points, its note giving the equation and the parameters.
void BuildFit(VyrBaseData& doc) {
    VyrExperience* e = NewExperience(doc, L"RLC circuit, fitted");
    VyrCourbe* u = NewCurve(doc, e, L"U", {L"t", L"s"}, {L"U", L"V"}, wxColour(200, 0, 0), 3, 0);
    std::mt19937 noise(7);
    std::normal_distribution<double> jitter(0.0, 0.05);
    const double tau = 0.004, w = 2 * kPi * 500;
    Sample(doc, u, 400, 0.0, 5e-5,
           [&](double t) { return 5.0 * std::exp(-t / tau) * std::cos(w * t) + jitter(noise); });
    Show(doc, u);
    VyrFit fit;
    fit.SetModel(L"damped");
    if (fit.Fit(u))
        if (VyrCourbe* model = fit.AddToDocument(&doc, u))
            Show(doc, model);
    Title(doc, 0, L"Damped oscillation: A exp(-t/tau) sin(2 pi f t + phi) + C fitted");
}

}  // namespace

int RunDemo(const Args& args) {
    if (args.size() > 1 || (!args.empty() && args[0].size() > 1 && args[0][0] == '-')) {
        Complain("demo", "usage: vyr demo [DIR]");
        return kExitUsage;
    }
    const wxString dir = args.empty() ? wxString("samples") : wxString::FromUTF8(args[0].c_str());
    if (!wxFileName::DirExists(dir) && !wxFileName::Mkdir(dir, 0777, wxPATH_MKDIR_FULL)) {
        Complain(dir, "cannot create the directory");
        return kExitOutput;
    }
    const struct {
        const char* file;
        void (*build)(VyrBaseData&);
        bool spectrum;
    } samples[] = {
        {"oscillation", &BuildOscillation, false}, {"sound", &BuildSound, false},
        {"spectrum", &BuildSpectrum, true},        {"pendulum", &BuildPendulum, false},
        {"signal", &BuildSignal, false},           {"fit", &BuildFit, false},
    };
    int result = kExitOk;
    for (const auto& sample : samples) {
        VyrBaseData doc(nullptr);
        VyrBaseData::SetActiveBase(&doc);
        sample.build(doc);
        const wxString base = dir + "/" + sample.file;
        VyrDiagram* diagram = doc.GetDiagram(0);
        diagram->SetSpectrum(sample.spectrum);
        diagram->SetGridShown(true);
        // The picture explains itself, as vyr render's does.
        diagram->SetOptions(VYR_OPTIONS_EXPLAINED);
        int code = SaveDocument(base + ".vyr", doc);
        if (!code)
            code = WriteSafely(base + ".png", [&](VyrSafeFile& file) {
                return VyrDiagramExport::Save(diagram, VyrDiagramExport::kFormatPng, file, 1200,
                                              800, 1.0);
            });
        if (!code)
            code = WriteAtomically(base + ".csv",
                                   [&](const wxString& p) { return doc.SaveAsCsvUTF8(p); });
        VyrBaseData::SetActiveBase(nullptr);
        if (code && !result)
            result = code;
        if (!code)
            std::printf("%s.vyr, .png, .csv\n", (const char*)base.utf8_str());
    }
    return result;
}

}  // namespace vyr
