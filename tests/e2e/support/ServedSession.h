#pragma once

#include "tests/e2e/support/Session.h"
#include "tests/support/LoopbackService.h"

namespace glimmerly::e2e {

/// A session of a build that names a service, which behaves as service.py says.
struct ServedSession {
    explicit ServedSession(const std::string& behaviour, const Desktop::Options& desktop = {})
        : session(desktop, {.environment = {{"TEST_SERVICE_BASE_URL", service.url(behaviour)},
                                            {"no_proxy", "127.0.0.1"}},
                            .program = GLIMMERLY_BUNDLE_DOUBLE}) {}

    LoopbackService service;
    Session session;
};

} // namespace glimmerly::e2e
