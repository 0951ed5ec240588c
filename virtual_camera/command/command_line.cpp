// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/command_line.h"

#include "virtual_camera/camera/words.h"
#include "virtual_camera/command/control_command.h"
#include "virtual_camera/command/device_options.h"

#include <array>
#include <glib.h>
#include <memory>

namespace virtual_camera {

namespace {

using Problem = std::optional<std::string>;
using Mode = CommandLine::Mode;
using LogKind = CommandLine::LogKind;

constexpr char onlyOnce[] = "--cameras and --devices can be given only once, and not both";

// What has been read so far. Options for devices can only be carried out when all devices
// are known.
struct Draft
{
    CommandLine line;
    std::vector<std::string> options;
    bool devicesGiven = false;
    int given = 0; // options of any kind
};

std::string quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

Problem readCameras(Draft &draft, const std::string &value)
{
    const std::optional<std::int64_t> count = parseNumber(value);
    if (!count)
        return "--cameras expects a number, not " + quoted(value);
    if (*count < 1 || *count > mostDevices)
        return "--cameras can be from 1 to " + std::to_string(mostDevices) + ", not " + value;
    if (draft.devicesGiven)
        return onlyOnce;
    draft.devicesGiven = true;
    draft.line.devices = DeviceDescription::ptzCameras(static_cast<int>(*count));
    return std::nullopt;
}

Problem readDevices(Draft &draft, const std::string &value)
{
    if (draft.devicesGiven)
        return onlyOnce;
    draft.devicesGiven = true;
    return parseDeviceList(value, draft.line.devices);
}

Problem readOption(Draft &draft, const std::string &value)
{
    draft.options.push_back(value);
    return std::nullopt;
}

template<CommandLine::LogKind kind> Problem readLog(Draft &draft, const std::string &value)
{
    if (value.empty())
        return "a log needs a file name or -";
    draft.line.logs.push_back({ kind, value });
    return std::nullopt;
}

template<Mode mode> Problem readSocket(Draft &draft, const std::string &value)
{
    if (value.empty())
        return "expected the file name of a socket, not nothing";
    if (draft.line.socket)
        return "only one of --control, --join and --tell can be given, and only once";
    draft.line.mode = mode;
    draft.line.socket = value;
    return std::nullopt;
}

Problem readView(Draft &draft, const std::string &)
{
    draft.line.view = true;
    return std::nullopt;
}

Problem readScript(Draft &draft, const std::string &value)
{
    draft.line.script = value;
    return std::nullopt;
}

Problem readAtStart(Draft &draft, const std::string &value)
{
    const auto parsed = parseControlCommand(value);
    if (const auto *problem = std::get_if<std::string>(&parsed))
        return "--at-start " + quoted(value) + ": " + *problem;
    draft.line.atStart.push_back(value);
    return std::nullopt;
}

template<Mode mode> Problem readMode(Draft &draft, const std::string &)
{
    draft.line.mode = mode;
    return std::nullopt;
}

struct Option
{
    const char *name;
    char letter;
    Problem (*read)(Draft &, const std::string &);
    const char *value; // null for one that takes none
    const char *help;
};

// clang-format off
constexpr std::array<Option, 14> options{{
    {"cameras", 0, readCameras, "N", "plug in N cameras, 1 to 32 (default 1)"},
    {"devices", 0, readDevices, "LIST", "plug in these, separated by commas, in this order"},
    {"option", 0, readOption, "[N.]KEY=VALUE", "describe device N, or all cameras; repeatable"},
    {"log", 0, readLog<LogKind::Text>, "FILE", "write each request as it is answered; - is standard output"},
    {"log-json", 0, readLog<LogKind::Json>, "FILE", "the same in lines of JSON"},
    {"log-pcap", 0, readLog<LogKind::Pcap>, "FILE", "write a capture of the bus, for Wireshark"},
    {"control", 0, readSocket<Mode::Run>, "SOCKET", "take control commands at this Unix socket"},
    {"view", 0, readView, nullptr, "show in a window what the cameras see"},
    {"at-start", 0, readAtStart, "COMMAND", "a control command before COMMAND starts; repeatable"},
    {"script", 0, readScript, "FILE", "control commands at their times, see below"},
    {"join", 0, readSocket<Mode::Join>, "SOCKET", "run COMMAND on the bus that has this socket"},
    {"tell", 0, readSocket<Mode::Tell>, "SOCKET", "send a control command there, print the answer"},
    {"help", 'h', readMode<Mode::Help>, nullptr, "show this help"},
    {"version", 0, readMode<Mode::Version>, nullptr, "show the version"},
}};
// clang-format on

gboolean onOption(const char *name, const char *value, void *data, GError **error)
{
    auto &draft = *static_cast<Draft *>(data);
    ++draft.given;
    for (const Option &option : options) {
        if (std::string("--") + option.name != name && std::string("-") + option.letter != name)
            continue;
        const Problem problem = option.read(draft, value == nullptr ? "" : value);
        if (problem)
            g_set_error(error, G_OPTION_ERROR, G_OPTION_ERROR_BAD_VALUE, "%s", problem->c_str());
        return problem ? FALSE : TRUE;
    }
    return FALSE;
}

using Context = std::unique_ptr<GOptionContext, void (*)(GOptionContext *)>;

// Options end where the command begins. Values are taken as the bytes that they are.
Context newContext(Draft &draft)
{
    Context context(g_option_context_new("[--] COMMAND [ARGUMENTS]"), g_option_context_free);
    g_option_context_set_strict_posix(context.get(), TRUE);
    g_option_context_set_help_enabled(context.get(), FALSE);
    std::vector<GOptionEntry> entries;
    for (const Option &option : options) {
        const int flags =
            G_OPTION_FLAG_FILENAME | (option.value == nullptr ? G_OPTION_FLAG_NO_ARG : 0);
        entries.push_back({ option.name, option.letter, flags, G_OPTION_ARG_CALLBACK,
            reinterpret_cast<void *>(onOption), option.help, option.value });
    }
    entries.push_back({});
    GOptionGroup *group = g_option_group_new("main", "", "", &draft, nullptr);
    g_option_group_add_entries(group, entries.data());
    g_option_context_set_main_group(context.get(), group);
    return context;
}

// Takes the options away from the words.
Problem readOptions(Draft &draft, std::vector<std::string> &words)
{
    const auto count = words.size() + 1;
    char **list = g_new0(char *, count + 1);
    list[0] = g_strdup("virtual-camera");
    for (std::size_t i = 0; i < words.size(); ++i)
        list[i + 1] = g_strdup(words[i].c_str());
    GError *error = nullptr;
    Problem problem;
    if (!g_option_context_parse_strv(newContext(draft).get(), &list, &error)) {
        problem = error->message;
        g_error_free(error);
    }
    words.clear();
    for (char **word = list + 1; *word != nullptr; ++word)
        words.emplace_back(*word);
    g_strfreev(list);
    return problem;
}

Problem finish(Draft &draft)
{
    CommandLine &line = draft.line;
    if (line.mode == Mode::Help || line.mode == Mode::Version)
        return std::nullopt;
    if (line.mode != Mode::Run && draft.given > 1)
        return "--join and --tell go with no other option";
    if (line.command.empty())
        return line.mode == Mode::Tell
            ? "--tell expects a control command (virtual-camera --tell SOCKET unplug 2)"
            : "no command given (virtual-camera [OPTIONS] -- COMMAND [ARGUMENTS])";
    if (!draft.devicesGiven)
        line.devices = DeviceDescription::ptzCameras(1);
    for (const std::string &option : draft.options) {
        if (Problem problem = applyDeviceOption(line.devices, option))
            return problem;
    }
    return std::nullopt;
}

std::string controlNames()
{
    constexpr std::size_t widest = 90;
    std::string text;
    std::string line = " ";
    for (const ControlTraits &control : allControls()) {
        const std::string name = control.name;
        if (line.size() + name.size() > widest) {
            text += line + "\n";
            line = " ";
        }
        line += ' ' + name;
    }
    return text + line + "\n";
}

} // namespace

std::variant<CommandLine, std::string> parseCommandLine(const std::vector<std::string> &arguments)
{
    Draft draft;
    draft.line.command = arguments;
    if (Problem problem = readOptions(draft, draft.line.command))
        return *problem;
    std::vector<std::string> &command = draft.line.command;
    if (!command.empty() && command[0] == "--")
        command.erase(command.begin());
    if (Problem problem = finish(draft))
        return *problem;
    return draft.line;
}

std::string helpText()
{
    Draft draft;
    const Context context = newContext(draft);
    g_option_context_set_summary(context.get(),
        R"(Runs COMMAND on a USB bus of its own, into which simulated pan-tilt-zoom cameras are plugged. The
cameras answer as real ones do and move; COMMAND needs no change, and sees no other USB device.
The exit code is that of COMMAND, or 128 + the signal that ended it.)");
    const std::string description =
        R"(Devices: camera, other-camera (another product id) and storage (no camera). Keys of --option:
  product, manufacturer, serial   text; an empty one is left out
  vendor-id, product-id           a number, or 0x...
  pan, tilt, and controls         MIN:MAX:DEFAULT:CURRENT[:STEP]
  without                         a control that the camera lacks, or all of camera_terminal or
                                  processing_unit
  with                            extension_unit
  uvc                             1.0, 1.1 (default) or 1.5

Control commands (N counts the devices from 1; with json before it a command is answered in JSON):
)" + controlCommandHelp()
        + "\nControls:\n" + controlNames() + R"(
A script has a control command on each line, after the seconds since COMMAND was started, or after
+ and the seconds since the line before; # starts a comment:
  1.5   unplug 1
  +0.5  replug 1

The log has one line for each request: seconds, device, request, control, what its bytes mean, the
bytes, and the outcome (ok, stall, gone, cancelled; by faults short, long, overflow, wrong, lost,
eproto, etime):
  0.512345 cam1 SET_CUR pantilt_relative pan=+1 pan_speed=21 tilt=0 tilt_speed=0 [01 15 00 00] ok
  0.734501 cam1 SET_CUR roll_absolute value=103 (recall preset 3) [67 00] ok
  0.800213 cam1 GET_CUR brightness value=128 [80 00] ok
Opening, closing, unplugging and plugging in again have lines of their own.

Examples:
  virtual-camera --cameras 3 -- lsusb -v
  virtual-camera --option brightness=-64:64:0:10 --log - -- ptz-panel
  virtual-camera --control /tmp/camera.sock -- ptz-panel &
  virtual-camera --tell /tmp/camera.sock unplug 1
  virtual-camera --join /tmp/camera.sock -- lsusb

Exit codes of its own: 1 failure, 2 wrong usage, 126 COMMAND cannot be run, 127 no such COMMAND.
)";
    g_option_context_set_description(context.get(), description.c_str());
    gchar *help = g_option_context_get_help(context.get(), TRUE, nullptr);
    const std::string text = help;
    g_free(help);
    return text;
}

} // namespace virtual_camera
