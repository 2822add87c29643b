#include "app/AppDelegate.h"
#include "app/ProgramBundle.h"
#include "capture/service/CaptureFile.h"
#include "diagnostics/GlimmerlyLog.h"
#include "platform/desktop/Desktop.h"
#include "platform/desktop/SingleInstance.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    using namespace glimmerly;

    auto instance = SingleInstance::claim();
    if (instance && !*instance)
        return EXIT_SUCCESS;

    GlimmerlyLog::bootstrap();
    if (instance)
        removeAbandonedCaptureFiles();
    else
        GlimmerlyLog::warning(log_category::appLifecycle, "Further starts cannot be noticed", {},
                              instance.error());
    AppDelegate delegate;
    const auto desktop = Desktop::open(argc, argv, programBundle());
    if (!desktop) {
        std::fprintf(stderr, "glimmerly: %s\n", desktop.error().description().c_str());
        return EXIT_FAILURE;
    }
    (*desktop)->followStarts(instance ? &**instance : nullptr);
    return (*desktop)->run(delegate);
}
