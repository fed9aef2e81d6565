#include <QGuiApplication>

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <unistd.h>

/// Starts itself again in a machine whose devices the tests make up.
int main(int argc, char **argv)
{
    QByteArray preloaded("libumockdev-preload.so.0");
    if (!qgetenv("LD_PRELOAD").contains(preloaded)) {
        // A sanitizer's library insists on being the first.
        Dl_info sanitizer{};
        if (void *const start = dlsym(RTLD_DEFAULT, "__asan_init"); start && dladdr(start, &sanitizer))
            preloaded.prepend(sanitizer.dli_fname + QByteArray(" "));
        qputenv("LD_PRELOAD", preloaded);
        execv("/proc/self/exe", argv);
        qFatal("cannot start again");
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
