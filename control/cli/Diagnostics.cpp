#include "control/cli/Diagnostics.h"

#include "control/cli/Failure.h"
#include "control/cli/MixerClient.h"
#include "control/values/JsonOutput.h"

namespace fadewell::cli {
namespace {

Output outputOf(const std::string& text, bool isComplete)
{
    return {OrderedJson{{"isComplete", isComplete}, {"text", text}}, text};
}

} // namespace

Output diagnostics(bool withNames, const LocalDiagnostics& local)
{
    try {
        const MixerClient client(QDBusConnection::sessionBus());
        const auto reply = client.call("Diagnostics", {withNames});
        return outputOf(reply.value(0).toString().toStdString(), true);
    } catch (const Failure& failure) {
        return outputOf(local(withNames, failure.what()), false);
    }
}

} // namespace fadewell::cli
