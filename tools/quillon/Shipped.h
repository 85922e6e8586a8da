// The files that ship with the program: beside it in the build tree, or where an install puts them.
#pragma once
#include <string>

// The path of a file shipped with the program: beside the program, else in the install's folder for
// it (given relative to the program's folder). Empty when it is in neither place.
std::string ShippedFile(const std::string& name, const std::string& installedFolder);
// The control's module, Quillon.ocx.
std::string ShippedModulePath();
// The picture the demo puts on its drop button.
std::string ShippedDemoPicture();
// The module's description and file version, and whether it registers itself, as its version
// resource states them; false with the reason when it has none.
bool DescribeModule(const std::string& path, std::string& text);
