#pragma once

#include <functional>
#include <string>
#include <string_view>

class QXmlStreamAttributes;

namespace glimmerly {

/// An element of an XML document as its start tag gives it.
struct XmlElement {
    std::string name; ///< without a namespace
    const QXmlStreamAttributes& attributes;

    /// Empty for one that is missing.
    [[nodiscard]] std::string attribute(const char* attributeName) const;
};

/// Reads `xml` as a stream: `start` and `end` hear of each element. Ends at the first error, and at a
/// document type, so that no entity is ever expanded.
void readXmlElements(std::string_view xml, const std::function<void(const XmlElement&)>& start,
                     const std::function<void(const std::string& name)>& end);

} // namespace glimmerly
