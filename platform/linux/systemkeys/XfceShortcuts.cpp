#include "platform/linux/systemkeys/XfceShortcuts.h"

#include "platform/linux/systemkeys/GtkAccelerator.h"

#include <QString>
#include <QStringList>
#include <QXmlStreamReader>

#include <map>

namespace fadewell::XfceShortcuts {
namespace {

/// Values by their path of three names: who acts, "default" or "custom", the combination.
using Properties = std::map<QStringList, QString>;

void read(const std::string& text, Properties& properties)
{
    constexpr qsizetype depth = 3; // what is deeper says how a command is started
    QXmlStreamReader xml(QByteArray::fromStdString(text));
    QStringList path;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (xml.name() != u"property") {
            continue;
        }
        if (token == QXmlStreamReader::StartElement) {
            const auto attributes = xml.attributes();
            path.append(attributes.value("name").toString());
            if (path.size() == depth) {
                const bool isEmpty = attributes.value("type") == u"empty";
                properties[path] = isEmpty ? QString() : attributes.value("value").toString();
            }
        } else if (token == QXmlStreamReader::EndElement) {
            path.removeLast();
        }
    }
}

} // namespace

std::vector<KeyBinding> parse(const std::vector<std::string>& files)
{
    Properties properties;
    for (const auto& text : files) {
        read(text, properties);
    }
    const auto isCustomized = [&properties](const QString& provider) {
        const auto found = properties.find({provider, "custom", "override"});
        return found != properties.end() && found->second == "true";
    };
    std::vector<KeyBinding> bindings;
    for (const auto& [path, value] : properties) {
        if (value.isEmpty() || path[1] != (isCustomized(path[0]) ? "custom" : "default")) {
            continue;
        }
        if (const auto binding = parseGtkAccelerator(path[2].toStdString())) {
            bindings.push_back(*binding);
        }
    }
    return bindings;
}

} // namespace fadewell::XfceShortcuts
