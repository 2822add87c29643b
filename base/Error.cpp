#include "base/Error.h"

#include <system_error>

namespace glimmerly {

Error Error::posix(int errnoValue, std::string_view what) {
    return {"POSIX", errnoValue, std::string(what) + ": " + std::generic_category().message(errnoValue)};
}

Error Error::withFailureReason(std::string reason) && {
    failureReason_ = std::move(reason);
    return std::move(*this);
}

Error Error::withUnderlying(Error cause) && {
    underlying_ = std::make_shared<const Error>(std::move(cause));
    return std::move(*this);
}

} // namespace glimmerly
