// A type library as ODL text: enumerations, dispatch interfaces with their properties and methods,
// and coclasses, in the library's order.
#pragma once
#include <string>
#include "com/typeinfo.h"

std::string TypeLibAsOdl(ITypeLib* lib);
