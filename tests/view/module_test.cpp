// The module that draws, as the program finds it.
#include "picture/module.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

namespace {

using Function = const picture::Module* (*)(const char*);

Function FunctionOf(const char* path)
{
    void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    EXPECT_NE(library, nullptr) << dlerror();
    return library == nullptr ? nullptr : reinterpret_cast<Function>(dlsym(library, picture::ModuleFunction));
}

TEST(PictureModule, IsForTheProgramOfItsVersion)
{
    const Function function = FunctionOf(ZUCMTR_PICTURE);
    ASSERT_NE(function, nullptr);
    EXPECT_NE(function(ZUCMTR_VERSION), nullptr);
    EXPECT_EQ(function("1.99.0"), nullptr);
    EXPECT_EQ(function(""), nullptr);
}

// This test is in another directory than the program and its module.
TEST(PictureModule, IsMissedByItsPlace)
{
    try {
        picture::Loaded();
        FAIL();
    } catch (const picture::ModuleError& error) {
        EXPECT_TRUE(error.Message().startsWith(
            QStringLiteral("the part of the program that draws pictures cannot be loaded: '/")))
            << qPrintable(error.Message());
        EXPECT_TRUE(error.Message().endsWith(
            QStringLiteral("/zucmtr/picture.so' is not there; install the program again")))
            << qPrintable(error.Message());
    }
}

} // namespace
