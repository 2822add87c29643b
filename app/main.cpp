#include "app/AppDelegate.h"
#include "app/ProgramBundle.h"
#include "capture/service/CaptureFile.h"
#include "diagnostics/GlimmerlyLog.h"
#include "platform/desktop/Desktop.h"
#include "platform/desktop/SingleInstance.h"
#include "platform/desktop/TerminationSignals.h"
#include "platform/linux/updates/install/SelfCheck.h"
#include "platform/linux/updates/install/TrialStart.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace {

using namespace glimmerly;

std::unique_ptr<Desktop> openDesktop(char* program, TrialStart& start) {
    auto desktop = Desktop::open(program, programBundle(), start);
    if (desktop)
        return std::move(*desktop);
    std::fprintf(stderr, "glimmerly: %s\n", desktop.error().description().c_str());
    return nullptr;
}

} // namespace

int main(int argc, char** argv) {
    surviveFailedWrites();
    TrialStart start(InstalledFolder::ofThisProcess());
    if (argc == 2 && std::string_view(argv[1]) == selfCheckOption)
        return openDesktop(argv[0], start) ? EXIT_SUCCESS : EXIT_FAILURE;

    start.begin();
    auto instance = SingleInstance::claim();
    if (instance && !*instance) {
        start.end();
        return EXIT_SUCCESS;
    }

    GlimmerlyLog::bootstrap();
    if (!instance)
        GlimmerlyLog::warning(log_category::appLifecycle, "Further starts cannot be noticed", {},
                              instance.error());
    else if ((*instance)->isOnlySession())
        removeAbandonedCaptureFiles();
    AppDelegate delegate;
    const auto desktop = openDesktop(argv[0], start);
    if (!desktop)
        return EXIT_FAILURE;
    desktop->followStarts(instance ? &**instance : nullptr);
    return desktop->run(delegate);
}
