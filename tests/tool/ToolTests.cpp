// `quillon run` as a person uses it: scripts that set and read properties, hear events, save and
// load, type into a focused control and write a PNG; errors end the run with a message.
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

Result RunScript(const std::string& script)
{
    auto dir = std::filesystem::temp_directory_path() / ("quillon-tool-" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir);
    std::string js = (dir / "script.js").string(), out = (dir / "out.txt").string(), err = (dir / "err.txt").string();
    std::ofstream(js) << script;
    std::string cmd = std::string(QUILLON_TOOL) + " run " + js + " >" + out + " 2>" + err;
    int status = std::system(cmd.c_str());
    return {WEXITSTATUS(status), Slurp(out), Slurp(err)};
}

const char* kForm = "var form = host.form(100, 100, 400, 300);\n"
                    "var q = form.create('QUILLON.QuillonCtrl.2', 10, 10, 120, 24);\n";

} // namespace

TEST(Tool, PropertiesAndEventsInOrder)
{
    Result r = RunScript(std::string(kForm) +
                         "q.on('Change', function () { print('Change', q.Text); });\n"
                         "host.on('PropertyChanged', function (id) { print('PropertyChanged', id); });\n"
                         "q.EditMask = '##-##'; q.UseMaskChars = false;\n"
                         "q.Text = '1234';\n"
                         "print(q.text, q.BorderType, q.Enabled, q.BackColor);\n"
                         "q.BorderType = 9; print(q.BorderType);\n"
                         "print('a', 1, true, null, undefined);\n");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "PropertyChanged -517\nChange 1234\n1234 3 true 2147483653\n3\na 1 true null undefined\n");
}

TEST(Tool, UnknownNamesAreErrorsNamingThem)
{
    Result r = RunScript(std::string(kForm) + "print('before');\nq.Bogus = 1;\nprint('after');\n");
    EXPECT_NE(r.status, 0);
    EXPECT_EQ(r.out, "before\n");
    EXPECT_NE(r.err.find("Bogus"), std::string::npos) << r.err;
    EXPECT_NE(r.err.find("script.js:4"), std::string::npos) << "the line is named: " << r.err;

    r = RunScript(std::string(kForm) + "var x = q.Nope;\n");
    EXPECT_NE(r.status, 0);
    EXPECT_NE(r.err.find("'Nope'"), std::string::npos) << r.err;
    r = RunScript(std::string(kForm) + "q.on('Clicky', function () {});\n");
    EXPECT_NE(r.err.find("'Clicky'"), std::string::npos) << r.err;
    r = RunScript(std::string(kForm) + "q.DropWidth = 70000;\n");
    EXPECT_NE(r.err.find("DropWidth"), std::string::npos) << r.err;
}

TEST(Tool, MethodsFontsAndErrorEvents)
{
    Result r = RunScript(std::string(kForm) +
                         "q.on('CtrlError', function (e, i) { print('CtrlError', e, i); });\n"
                         "print(q.AddItem('x'), q.AddItem('y'), q.ItemCount());\n"
                         "print(q.RemoveItem(7));\n"
                         "q.Font.Bold = true; print(q.Font.Name, q.Font.Bold, q.Font.Size);\n");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "0 1 2\nCtrlError 32003 7\nfalse\nMS Sans Serif true 8.25\n");
}

TEST(Tool, SaveLoadAndDirtyFlag)
{
    Result r = RunScript(std::string(kForm) +
                         "q.ArrowType = 2; print(host.isDirty(q));\n"
                         "var s = host.save(q); print(host.isDirty(q), s.indexOf('ArrowSize = 2') >= 0);\n"
                         "var c = form.load('QUILLON.QuillonCtrl.2', s, 10, 40, 120, 24); print(c.ArrowType);\n"
                         "var e = form.load('QUILLON.QuillonCtrl.2', '', 10, 70, 120, 24); print(e.DropForeColor, q.DropForeColor);\n");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "true\nfalse true\n2\n2147483666 0\n");
}

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

TEST(Tool, UsageAndMissingFiles)
{
    int status = std::system((std::string(QUILLON_TOOL) + " >/dev/null 2>&1").c_str());
    EXPECT_EQ(WEXITSTATUS(status), 2);
    status = std::system((std::string(QUILLON_TOOL) + " run /nonexistent.js >/dev/null 2>&1").c_str());
    EXPECT_EQ(WEXITSTATUS(status), 2);
    status = std::system((std::string(QUILLON_TOOL) + " demo >/dev/null 2>&1").c_str());
    EXPECT_EQ(WEXITSTATUS(status), 0);
}
