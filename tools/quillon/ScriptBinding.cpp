// Errors and hidden properties shared by the script's C functions.
#include "ScriptBinding.h"
#include <algorithm>
#include <cctype>
#include <cstdio>
#include "ScriptHost.h"
#include "ScriptObjects.h"
#include "com/objbase.h"
#include "com/typeinfo.h"

namespace {
const char kSignatureKey[] = DUK_HIDDEN_SYMBOL("signature");
const char kObjectNameKey[] = DUK_HIDDEN_SYMBOL("objectName");
} // namespace

void ThrowPendingHandlerError(duk_context* ctx)
{
    CScriptHost& host = ScriptHostOf(ctx);
    if (!host.HasHandlerError()) return;
    host.TakeHandlerError();
    (void)duk_throw(ctx);
}

duk_ret_t PushScriptError(duk_context* ctx, const std::string& message)
{
    // No C file name: Duktape then blames the script line that made the call.
    duk_push_error_object_raw(ctx, DUK_ERR_ERROR, nullptr, 0, "%s", message.c_str());
    return kThrow;
}

std::string HResultText(HRESULT hr)
{
    struct Known { HRESULT hr; const char* name; const char* meaning; };
    static const Known kKnown[] = {
        {E_NOTIMPL, "E_NOTIMPL", "not implemented"},
        {E_NOINTERFACE, "E_NOINTERFACE", "no such interface"},
        {E_POINTER, "E_POINTER", "null pointer"},
        {E_FAIL, "E_FAIL", "unspecified failure"},
        {E_UNEXPECTED, "E_UNEXPECTED", "unexpected failure"},
        {E_OUTOFMEMORY, "E_OUTOFMEMORY", "out of memory"},
        {E_INVALIDARG, "E_INVALIDARG", "invalid argument"},
        {E_ACCESSDENIED, "E_ACCESSDENIED", "access denied"},
        {CLASS_E_NOAGGREGATION, "CLASS_E_NOAGGREGATION", "the class cannot be aggregated"},
        {CLASS_E_CLASSNOTAVAILABLE, "CLASS_E_CLASSNOTAVAILABLE", "the server does not provide the class"},
        {REGDB_E_CLASSNOTREG, "REGDB_E_CLASSNOTREG", "class not registered"},
        {CO_E_CLASSSTRING, "CO_E_CLASSSTRING", "no class is registered under the name"},
        {CO_E_DLLNOTFOUND, "CO_E_DLLNOTFOUND", "the class's module cannot be loaded"},
        {CO_E_ERRORINDLL, "CO_E_ERRORINDLL", "the class's module has no DllGetClassObject"},
        {DISP_E_UNKNOWNINTERFACE, "DISP_E_UNKNOWNINTERFACE", "unknown interface"},
        {DISP_E_MEMBERNOTFOUND, "DISP_E_MEMBERNOTFOUND", "member not found"},
        {DISP_E_PARAMNOTFOUND, "DISP_E_PARAMNOTFOUND", "parameter not found"},
        {DISP_E_TYPEMISMATCH, "DISP_E_TYPEMISMATCH", "type mismatch"},
        {DISP_E_UNKNOWNNAME, "DISP_E_UNKNOWNNAME", "unknown name"},
        {DISP_E_NONAMEDARGS, "DISP_E_NONAMEDARGS", "no named arguments"},
        {DISP_E_BADVARTYPE, "DISP_E_BADVARTYPE", "bad variable type"},
        {DISP_E_EXCEPTION, "DISP_E_EXCEPTION", "exception"},
        {DISP_E_OVERFLOW, "DISP_E_OVERFLOW", "overflow"},
        {DISP_E_BADINDEX, "DISP_E_BADINDEX", "index out of range"},
        {DISP_E_BADPARAMCOUNT, "DISP_E_BADPARAMCOUNT", "wrong number of arguments"},
        {TYPE_E_REGISTRYACCESS, "TYPE_E_REGISTRYACCESS", "the registry could not be read or written"},
        {TYPE_E_LIBNOTREGISTERED, "TYPE_E_LIBNOTREGISTERED", "type library not registered"},
        {TYPE_E_ELEMENTNOTFOUND, "TYPE_E_ELEMENTNOTFOUND", "no such element in the type library"},
        {TYPE_E_CANTLOADLIBRARY, "TYPE_E_CANTLOADLIBRARY", "the type library cannot be loaded"},
        {SELFREG_E_TYPELIB, "SELFREG_E_TYPELIB", "the type library could not be registered"},
        {SELFREG_E_CLASS, "SELFREG_E_CLASS", "the class could not be registered"},
        {CTL_E_SETNOTSUPPORTED, "CTL_E_SETNOTSUPPORTED", "the property is read-only"},
        {CTL_E_OUTOFMEMORY, "CTL_E_OUTOFMEMORY", "out of memory"},
    };
    char hex[16];
    std::snprintf(hex, sizeof hex, "0x%08X", static_cast<unsigned>(hr));
    for (const Known& k : kKnown)
        if (k.hr == hr) return std::string(hex) + " " + k.name + " (" + k.meaning + ")";
    // Unnamed codes still tell whose they are: their facility, and the code within it.
    unsigned facility = (static_cast<unsigned>(hr) >> 16) & 0x1FFF, code = static_cast<unsigned>(hr) & 0xFFFF;
    const char* owner = facility == 2    ? "automation"
                        : facility == 4  ? "interface-specific"
                        : facility == 7  ? "Win32"
                        : facility == 10 ? "control"
                                         : nullptr;
    char text[96];
    if (owner) std::snprintf(text, sizeof text, " (unnamed %s error %u)", owner, code);
    else std::snprintf(text, sizeof text, " (unnamed error, facility %u, code %u)", facility, code);
    return hex + std::string(text);
}

duk_ret_t PushDispatchError(duk_context* ctx, const std::string& what, const CString& member, HRESULT hr)
{
    return PushScriptError(ctx, what + " '" + ToUtf8(member) + "' failed: HRESULT " + HResultText(hr));
}

void PutHiddenPointer(duk_context* ctx, duk_idx_t obj, const char* key, void* p)
{
    obj = duk_normalize_index(ctx, obj);
    duk_push_pointer(ctx, p);
    duk_put_prop_string(ctx, obj, key);
}

void* GetHiddenPointer(duk_context* ctx, duk_idx_t obj, const char* key)
{
    if (!duk_is_object(ctx, obj)) return nullptr;
    duk_get_prop_string(ctx, obj, key);
    void* p = duk_get_pointer(ctx, -1);
    duk_pop(ctx);
    return p;
}

void PutFunction(duk_context* ctx, duk_idx_t obj, const char* name, duk_c_function fn, duk_idx_t nargs)
{
    obj = duk_normalize_index(ctx, obj);
    duk_push_c_function(ctx, fn, nargs);
    duk_put_prop_string(ctx, obj, name);
}

void PutCall(duk_context* ctx, duk_idx_t obj, const char* name, duk_c_function fn, const Signature& signature)
{
    obj = duk_normalize_index(ctx, obj);
    duk_push_c_function(ctx, fn, DUK_VARARGS);
    PutHiddenPointer(ctx, -1, kSignatureKey, const_cast<Signature*>(&signature));
    duk_put_prop_string(ctx, obj, name);
}

namespace {
const char* KindName(Arg kind)
{
    switch (kind) {
    case Arg::String: return "a string";
    case Arg::Number: return "a number";
    case Arg::Control: return "a control";
    case Arg::Function: return "a function";
    case Arg::Any: break;
    }
    return "any value";
}

bool IsKind(duk_context* ctx, duk_idx_t i, Arg kind)
{
    switch (kind) {
    case Arg::String: return duk_is_string(ctx, i);
    case Arg::Number: return duk_is_number(ctx, i);
    case Arg::Control: return ControlOf(ctx, i) != nullptr;
    case Arg::Function: return duk_is_function(ctx, i);
    case Arg::Any: break;
    }
    return true;
}

// The value's kind as the messages name it.
std::string ActualKind(duk_context* ctx, duk_idx_t i)
{
    switch (duk_get_type(ctx, i)) {
    case DUK_TYPE_UNDEFINED: return "undefined";
    case DUK_TYPE_NULL: return "null";
    case DUK_TYPE_BOOLEAN: return "a boolean";
    case DUK_TYPE_NUMBER: return "a number";
    case DUK_TYPE_STRING: return "a string";
    default: break;
    }
    if (ControlOf(ctx, i)) return "a control";
    if (duk_is_function(ctx, i)) return "a function";
    if (duk_is_array(ctx, i)) return "an array";
    return "an object";
}

// "form.create(progID, x, y, w, h)"
std::string CallText(const Signature& sig)
{
    std::string text = std::string(sig.call) + "(";
    for (size_t i = 0; i < sig.params.size(); ++i) text += (i ? ", " : "") + std::string(sig.params[i].name);
    return text + ")";
}

// "a", "a and b", "a, b and c"
std::string ListText(const std::vector<std::string>& names)
{
    std::string text;
    for (size_t i = 0; i < names.size(); ++i)
        text += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + names[i];
    return text;
}
} // namespace

namespace {
bool Absent(duk_context* ctx, duk_idx_t i) { return i >= duk_get_top(ctx) || duk_is_undefined(ctx, i); }
} // namespace

bool CheckArguments(duk_context* ctx)
{
    duk_push_current_function(ctx);
    auto* sig = static_cast<const Signature*>(GetHiddenPointer(ctx, -1, kSignatureKey));
    duk_pop(ctx);
    if (!sig) return true;
    std::vector<std::string> missing;
    for (size_t i = 0; i < sig->params.size(); ++i)
        if (!sig->params[i].optional && Absent(ctx, static_cast<duk_idx_t>(i))) missing.push_back(sig->params[i].name);
    if (!missing.empty()) {
        PushScriptError(ctx, CallText(*sig) + ": missing " + ListText(missing));
        return false;
    }
    for (size_t i = 0; i < sig->params.size(); ++i) {
        const Param& p = sig->params[i];
        auto at = static_cast<duk_idx_t>(i);
        if ((p.optional && Absent(ctx, at)) || IsKind(ctx, at, p.kind)) continue;
        PushScriptError(ctx, CallText(*sig) + ": " + p.name + " must be " + KindName(p.kind) + ", not " + ActualKind(ctx, at));
        return false;
    }
    return true;
}

namespace {
std::string Folded(const std::string& s)
{
    std::string out = s;
    for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return out;
}

// Edits (insert, delete, replace, swap of neighbours) that turn a into b.
size_t EditDistance(const std::string& a, const std::string& b)
{
    std::vector<std::vector<size_t>> d(a.size() + 1, std::vector<size_t>(b.size() + 1));
    for (size_t i = 0; i <= a.size(); ++i) d[i][0] = i;
    for (size_t j = 0; j <= b.size(); ++j) d[0][j] = j;
    for (size_t i = 1; i <= a.size(); ++i)
        for (size_t j = 1; j <= b.size(); ++j) {
            d[i][j] = std::min({d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + (a[i - 1] != b[j - 1])});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
        }
    return d[a.size()][b.size()];
}
} // namespace

std::string NearestName(const std::string& name, const std::vector<std::string>& candidates)
{
    std::string typed = Folded(name), best;
    // A slip is about one edit in three letters; a shortened name counts when it starts the candidate.
    size_t bestScore = std::max<size_t>(1, typed.size() / 3) + 1;
    for (const std::string& candidate : candidates) {
        std::string folded = Folded(candidate);
        size_t score = EditDistance(typed, folded);
        if (typed.size() >= 3 && folded.compare(0, typed.size(), typed) == 0) score = std::min<size_t>(score, 1);
        if (score < bestScore) {
            bestScore = score;
            best = candidate;
        }
    }
    return best;
}

std::string DidYouMean(const std::string& name, const std::vector<std::string>& candidates)
{
    std::string nearest = NearestName(name, candidates);
    return nearest.empty() ? std::string() : " (did you mean '" + nearest + "'?)";
}

namespace {
std::string ObjectNameOf(duk_context* ctx)
{
    duk_push_this(ctx); // the handler
    duk_get_prop_string(ctx, -1, kObjectNameKey);
    std::string name = duk_get_string_default(ctx, -1, "object");
    duk_pop_2(ctx);
    return name;
}

std::vector<std::string> OwnNames(duk_context* ctx, duk_idx_t obj)
{
    std::vector<std::string> names;
    duk_enum(ctx, obj, DUK_ENUM_OWN_PROPERTIES_ONLY);
    while (duk_next(ctx, -1, 0)) {
        names.push_back(duk_get_string_default(ctx, -1, ""));
        duk_pop(ctx);
    }
    duk_pop(ctx);
    return names;
}

bool TargetHas(duk_context* ctx)
{
    if (duk_is_symbol(ctx, 1)) return true;
    duk_dup(ctx, 1);
    return duk_has_prop(ctx, 0);
}

// get trap [target key receiver]
duk_ret_t StrictGetBody(duk_context* ctx)
{
    if (TargetHas(ctx)) {
        duk_dup(ctx, 1);
        duk_get_prop(ctx, 0);
        return 1;
    }
    std::string name = duk_get_string_default(ctx, 1, "");
    if (name == "toJSON") return 0; // asked by JSON.stringify
    std::string object = ObjectNameOf(ctx);
    return PushScriptError(ctx, object + "." + name + " is not a function or property" + DidYouMean(name, OwnNames(ctx, 0)));
}

// set trap [target key value receiver]
duk_ret_t StrictSetBody(duk_context* ctx)
{
    if (TargetHas(ctx)) {
        duk_dup(ctx, 1);
        duk_dup(ctx, 2);
        duk_put_prop(ctx, 0);
        duk_push_true(ctx);
        return 1;
    }
    std::string name = duk_get_string_default(ctx, 1, "");
    std::string object = ObjectNameOf(ctx);
    return PushScriptError(ctx, object + "." + name + " is not a property" + DidYouMean(name, OwnNames(ctx, 0)));
}
} // namespace

void MakeStrict(duk_context* ctx, const char* objectName)
{
    duk_push_bare_object(ctx);
    duk_push_string(ctx, objectName);
    duk_put_prop_string(ctx, -2, kObjectNameKey);
    PutFunction(ctx, -1, "get", &Guarded<StrictGetBody>, 3);
    PutFunction(ctx, -1, "set", &Guarded<StrictSetBody>, 4);
    duk_push_proxy(ctx, 0);
}
