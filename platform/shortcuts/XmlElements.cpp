#include "platform/shortcuts/XmlElements.h"

#include <QXmlStreamReader>

namespace glimmerly {

std::string XmlElement::attribute(const char* attributeName) const {
    return attributes.value(QLatin1String(attributeName)).toUtf8().toStdString();
}

void readXmlElements(std::string_view xml, const std::function<void(const XmlElement&)>& start,
                     const std::function<void(const std::string&)>& end) {
    QXmlStreamReader reader(QByteArray::fromRawData(xml.data(), static_cast<qsizetype>(xml.size())));
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::DTD)
            return;
        const std::string name = reader.name().toUtf8().toStdString();
        if (token == QXmlStreamReader::StartElement) {
            const QXmlStreamAttributes attributes = reader.attributes();
            start({name, attributes});
        } else if (token == QXmlStreamReader::EndElement) {
            end(name);
        }
    }
}

} // namespace glimmerly
