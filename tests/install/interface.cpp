// The interface that hosts are compiled against, as it was when soname 2 was given: whoever changes a name, a
// type or the order of the parameters breaks them, and this file no longer compiles. It is neither linked nor
// run.
#include <zucmtrlib.h>

#include <type_traits>

namespace {

template <class Declared, class Promised>
constexpr bool Is = std::is_same_v<Declared, Promised>;

static_assert(Is<decltype(ZuCmtrConverterInit), bool()>);
static_assert(Is<decltype(ZuCmtrConverterExit), void()>);
static_assert(Is<decltype(ZuCmtrLoadFromIniDefault), bool(const QString& fileName, const QString& group)>);
static_assert(Is<decltype(ZuCmtrLoadFromIni),
                 bool(const QString& fileName, const QString& group, unsigned int* devId)>);
static_assert(Is<decltype(ZuCmtrConvertToComtrade),
                 bool(const QString& fileName, const QString& outDir, unsigned int devId)>);
static_assert(Is<decltype(ZuCmtrGetLastError), const QString&()>);
static_assert(Is<decltype(ZuCmtrSetLogFilePath), void(const QString& path)>);
static_assert(Is<decltype(ZuCmtrPopDevMessage), QString(unsigned int devId)>);
static_assert(Is<decltype(ZuCmtrGetDevLastError), QString(unsigned int devId)>);
static_assert(Is<decltype(ZuCmtrGetDevMsgCount), unsigned int(unsigned int devId)>);
static_assert(Is<decltype(ZuCmtrGetDevWaitTime), unsigned int(unsigned int devId)>);

} // namespace
