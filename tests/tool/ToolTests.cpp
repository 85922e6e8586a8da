// `quillon run` on scripts that type into a focused masked control, and one that writes a PNG in
// which the typed number is visible.
#include <gtest/gtest.h>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>

namespace {

struct Result {
    int status;
    std::string out;
    std::string err;
};

std::string Slurp(const std::string& path)
{
    std::ifstream f(path);
    std::ostringstream s;
    s << f.rdbuf();
    return s.str();
}

std::filesystem::path WorkDir()
{
    auto dir = std::filesystem::temp_directory_path() / ("quillon-tool-" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir);
    return dir;
}

// The program with these arguments, its output captured.
Result RunTool(const std::string& args)
{
    std::string out = (WorkDir() / "out.txt").string(), err = (WorkDir() / "err.txt").string();
    std::string cmd = std::string(QUILLON_TOOL) + " " + args + " >" + out + " 2>" + err;
    int status = std::system(cmd.c_str());
    return {WEXITSTATUS(status), Slurp(out), Slurp(err)};
}

Result RunScript(const std::string& script, const std::string& options = "")
{
    std::string js = (WorkDir() / "script.js").string();
    std::ofstream(js) << script;
    return RunTool("run " + options + js);
}

const char* kForm = "var form = host.form(100, 100, 400, 300);\n"
                    "var q = form.create('QUILLON.QuillonCtrl.2', 10, 10, 120, 24);\n";

} // namespace

TEST(Tool, TypingWithByReferenceKeyPressAndUserMode)
{
    Result r = RunScript(std::string(kForm) +
                         "q.EditMask = '(###) ###-####';\n"
                         "q.on('KeyPress', function (k) { print('KeyPress', k.value); k.value = 0; });\n"
                         "host.on('Beep', function () { print('Beep'); });\n"
                         "host.pump(); host.focus(q); host.type('5a5');\n"
                         "print(q.Text, q.SelStart());\n"
                         "host.userMode = false; print(host.userMode, q.SelStart());\n");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "KeyPress 53\nKeyPress 97\nBeep\nKeyPress 53\n(55 )    -     3\nfalse -1\n");
}

TEST(Tool, TypedNumberShowsInTheSnapshot)
{
    std::string png = (std::filesystem::temp_directory_path() / "quillon-typed.png").string();
    std::filesystem::remove(png);
    Result r = RunScript(std::string(kForm) +
                         "q.EditMask = '(###) ###-####';\n"
                         "host.pump(); host.focus(q); host.type('5551234567');\n"
                         "var dark = 0;\n"
                         "for (var x = 113; x < 225; ++x) for (var y = 113; y < 131; ++y) if (host.pixel(x, y) === 0) ++dark;\n"
                         "print(q.Text, dark > 60);\n"
                         "host.snapshot('" + png + "', 100, 100, 200, 50);\n");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "(555) 123-4567 true\n");
    EXPECT_TRUE(std::filesystem::exists(png));
    EXPECT_GT(std::filesystem::file_size(png), 100u);
}

// The first paint puts the live edit in place; the form paints again after it, so text set before
// it shows, on a plain field, a masked one and one on a second form.
TEST(Tool, TextSetBeforeTheFirstPaintShows)
{
    Result r = RunScript("function dark(x0, y0) { var n = 0;\n"
                         "  for (var x = x0; x < x0 + 112; ++x) for (var y = y0; y < y0 + 18; ++y) if (host.pixel(x, y) === 0) ++n;\n"
                         "  return n; }\n"
                         "var a = host.form(0, 0, 200, 100), b = host.form(0, 100, 200, 100);\n"
                         "a.create('QUILLON.QuillonCtrl.2', 10, 10, 120, 24).Text = 'Hello';\n"
                         "var m = a.create('QUILLON.QuillonCtrl.2', 10, 40, 120, 24);\n"
                         "m.EditMask = '##-##'; m.Text = '12-34';\n"
                         "b.create('QUILLON.QuillonCtrl.2', 10, 10, 120, 24).Text = 'Other';\n"
                         "host.pump();\n"
                         "print(dark(13, 13) > 20, dark(13, 43) > 20, dark(13, 113) > 20);\n");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "true true true\n");
}

// Width and height from a PNG's header.
std::pair<unsigned, unsigned> PngSize(const std::string& path)
{
    std::string png = Slurp(path);
    auto at = [&](size_t i) { return png.size() > i + 3 ? (unsigned char)png[i] << 24 | (unsigned char)png[i + 1] << 16 |
                                                               (unsigned char)png[i + 2] << 8 | (unsigned char)png[i + 3]
                                                         : 0u; };
    return {at(16), at(20)};
}

// form.snapshot is the screen under the form, cut to the screen where the form leaves it.
TEST(Tool, FormSnapshotIsTheFormsArea)
{
    auto dir = std::filesystem::temp_directory_path();
    std::string whole = (dir / "quillon-form.png").string(), area = (dir / "quillon-area.png").string(),
                edge = (dir / "quillon-edge.png").string();
    Result r = RunScript("var form = host.form(50, 60, 200, 100);\n"
                         "form.create('QUILLON.QuillonCtrl.2', 10, 10, 120, 24).Text = 'Snap';\n"
                         "form.snapshot('" + whole + "'); host.snapshot('" + area + "', 50, 60, 200, 100);\n"
                         "host.form(900, 700, 200, 100).snapshot('" + edge + "');\n");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(PngSize(whole), std::make_pair(200u, 100u));
    EXPECT_EQ(Slurp(whole), Slurp(area));
    EXPECT_EQ(PngSize(edge), std::make_pair(124u, 68u));
}

TEST(Tool, FrozenAreaOutlivesTheLookUntilThawed)
{
    Result r = RunScript(std::string(kForm) +
                         "function dark() { var n = 0;\n"
                         "  for (var x = 113; x < 225; ++x) for (var y = 113; y < 131; ++y) if (host.pixel(x, y) === 0) ++n;\n"
                         "  return n; }\n"
                         "q.Text = '8888888'; host.pump(); var shown = dark();\n"
                         "host.freeze(110, 110, 30, 24); q.Text = '';\n"
                         "var held = dark();\n"
                         "host.thaw(); var gone = dark();\n"
                         "print(shown > 20, held > 20 && held < shown, gone);\n"
                         "host.freeze(110, 110, 0, 24);\n");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, "true true 0\n");
    EXPECT_NE(r.err.find("freeze: the area must be non-empty"), std::string::npos) << r.err;
}

// Each run is a fresh process that finds the control through the registry file alone; register and
// unregister print the keys they change and keep the registry in the file.
TEST(Tool, ARegistryFileDecidesWhatEachRunCanCreate)
{
    const std::string reg = (WorkDir() / "machine.reg").string();
    std::filesystem::remove(reg);
    const std::string script = std::string(kForm) + "print(q.EditMask = '##');\n";
    const std::string withRegistry = "--registry " + reg + " ";
    Result r = RunScript(script, withRegistry);
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("no control is registered as 'QUILLON.QuillonCtrl.2'"), std::string::npos) << r.err;

    r = RunTool("register " + withRegistry + QUILLON_MODULE);
    ASSERT_EQ(r.status, 0) << r.err;
    const std::string controlKey = "[HKEY_CLASSES_ROOT\\CLSID\\{5C4B1F20-3E2A-4B7D-9A61-2F0C8D7E4A10}]\n@=\"Quillon Control 2.0\"\n";
    EXPECT_NE(r.out.find(controlKey), std::string::npos) << r.out;
    EXPECT_NE(Slurp(reg).find(std::string("@=\"") + QUILLON_MODULE + "\""), std::string::npos) << "InprocServer32 names the module";
    EXPECT_EQ(RunTool("register " + withRegistry).out, "") << "registering again writes nothing new";
    r = RunScript(script, withRegistry);
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "##\n");
    r = RunTool("typelib " + withRegistry); // the library is loaded from the module the file names
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out.rfind("[uuid(5C4B1F2F-3E2A-4B7D-9A61-2F0C8D7E4A10), version(2.0)", 0), 0u) << r.out;

    r = RunTool("unregister " + withRegistry);
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_NE(r.out.find(controlKey), std::string::npos) << "the removed keys are printed";
    EXPECT_EQ(r.out.find("Component Categories"), std::string::npos) << "the categories stay";
    EXPECT_NE(Slurp(reg).find("Controls safely scriptable!"), std::string::npos);
    EXPECT_EQ(RunScript(script, withRegistry).status, 1);
    r = RunTool("unregister " + withRegistry);
    EXPECT_NE(r.err.find("DllUnregisterServer failed: 0x80040200 SELFREG_E_TYPELIB"), std::string::npos) << "nothing left";

    r = RunTool("register " + withRegistry + "/no/such/module.ocx");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err, "quillon: cannot load the module '/no/such/module.ocx'\n");
    std::ofstream(reg) << "Windows Registry Editor Version 5.00\n\n[HKEY_CLASSES_ROOT\\A]\n@=dword:1\n";
    EXPECT_EQ(RunTool("register " + withRegistry).err, "quillon: the registry file '" + reg + "' is damaged at line 4\n");
}
