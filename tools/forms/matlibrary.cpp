#include "forms/matlibrary.h"

#include "forms/comtradetext.h"
#include "text/texts.h"

#include <dlfcn.h>

namespace forms {

namespace {

[[noreturn]] void Fail()
{
    const char* const reason = dlerror();
    throw FormError(Tr("forms", "MAT files need the library %1, which cannot be loaded: %2")
                        .arg(QStringLiteral(MATIO_SONAME), QString::fromLocal8Bit(reason)));
}

template <class Function>
void Find(void* library, const char* name, Function& function)
{
    void* const symbol = dlsym(library, name);
    if (symbol == nullptr)
        Fail();
    function = reinterpret_cast<Function>(symbol);
}

MatLibrary Loaded()
{
    void* const library = dlopen(MATIO_SONAME, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        Fail();
    MatLibrary functions{};
    Find(library, "Mat_Close", functions.Close);
    Find(library, "Mat_CreateVer", functions.CreateVer);
    Find(library, "Mat_Open", functions.Open);
    Find(library, "Mat_VarCreate", functions.VarCreate);
    Find(library, "Mat_VarCreateStruct", functions.VarCreateStruct);
    Find(library, "Mat_VarFree", functions.VarFree);
    Find(library, "Mat_VarGetNumberOfFields", functions.VarGetNumberOfFields);
    Find(library, "Mat_VarGetStructFieldByIndex", functions.VarGetStructFieldByIndex);
    Find(library, "Mat_VarGetStructFieldnames", functions.VarGetStructFieldnames);
    Find(library, "Mat_VarRead", functions.VarRead);
    Find(library, "Mat_VarReadDataLinear", functions.VarReadDataLinear);
    Find(library, "Mat_VarReadInfo", functions.VarReadInfo);
    Find(library, "Mat_VarSetStructFieldByName", functions.VarSetStructFieldByName);
    Find(library, "Mat_VarWrite", functions.VarWrite);
    return functions;
}

} // namespace

const MatLibrary& Matio()
{
    static const MatLibrary library = Loaded();
    return library;
}

} // namespace forms
