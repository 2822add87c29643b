#include "bench/desktop/DamageExtension.h"

#include <xcb/damage.h>

#include <stdexcept>

namespace glimmerly::bench {

std::uint8_t damageEventOf(const XClient& client) {
    const auto* extension = xcb_get_extension_data(client.get(), &xcb_damage_id);
    if (extension == nullptr || extension->present == 0)
        throw std::runtime_error("the X server does not report what is painted");
    const Reply<xcb_damage_query_version_reply_t> version(
        xcb_damage_query_version_reply(client.get(), xcb_damage_query_version(client.get(), 1, 1), nullptr));
    return extension->first_event;
}

} // namespace glimmerly::bench
