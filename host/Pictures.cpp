// CHost::LoadPicture: picture objects from image files, as a script hands them to DropPicture.
#include <cctype>
#include <filesystem>
#include "gdi/wingdi.h"
#include "host/Host.h"

namespace {

std::string LowerExtension(const char* path)
{
    std::string ext = std::filesystem::path(path).extension().string();
    for (char& ch : ext) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
    return ext;
}

IPictureDisp* Fail(std::string* pReason, std::string reason)
{
    if (pReason) *pReason = std::move(reason);
    return nullptr;
}

} // namespace

IPictureDisp* CHost::LoadPicture(const char* path, std::string* pReason)
{
    if (!path || !*path) return Fail(pReason, "no picture file given");
    std::string ext = LowerExtension(path);
    PICTDESC desc{};
    desc.cbSizeofstruct = sizeof desc;
    if (ext == ".bmp" || ext == ".png") {
        desc.picType = PICTYPE_BITMAP;
        desc.bmp.hbitmap = ext == ".bmp" ? LoadBitmapFile(path) : LoadBitmapPng(path);
        if (!desc.bmp.hbitmap) return Fail(pReason, std::string(path) + ": not a readable " + ext.substr(1) + " image");
    } else if (ext == ".ico") {
        desc.picType = PICTYPE_ICON;
        desc.icon.hicon = LoadIconFile(path);
        if (!desc.icon.hicon) return Fail(pReason, std::string(path) + ": not a readable icon file");
    } else {
        return Fail(pReason, std::string(path) + ": a picture must be a .bmp, .ico or .png file");
    }
    // The picture object owns the handle from here on and frees it with its last reference.
    IPictureDisp* pDisp = nullptr;
    HRESULT hr = OleCreatePictureIndirect(&desc, IID_IPictureDisp, TRUE, reinterpret_cast<void**>(&pDisp));
    if (FAILED(hr)) {
        if (desc.picType == PICTYPE_BITMAP) DeleteObject(desc.bmp.hbitmap);
        else DestroyIcon(desc.icon.hicon);
        return Fail(pReason, std::string(path) + ": the picture object could not be made");
    }
    return pDisp;
}
