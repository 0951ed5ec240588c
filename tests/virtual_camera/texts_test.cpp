// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Text in and out: log lines, options, control commands, the command line.

#include "tests/virtual_camera/model_test_support.h"
#include "virtual_camera/camera/words.h"
#include "virtual_camera/command/command_line.h"
#include "virtual_camera/command/control_command.h"

#include <cerrno>
#include <gmock/gmock.h>

using namespace virtual_camera;
using testing::HasSubstr;
using testing::IsEmpty;
using Motor = Mechanics::Motor;

namespace {

LogRecord requestRecord(ControlRequest request)
{
    LogRecord record;
    record.device = 2;
    record.file = 1;
    record.request = std::move(request);
    return record;
}

LogRecord setRecord(Control control, Bytes bytes)
{
    return requestRecord(setRequest(traits(control), std::move(bytes)));
}

TEST(LogText, SaysWhatEachControlWasSetTo)
{
    const auto text = [](Control control, Bytes bytes) {
        return toText(setRecord(control, std::move(bytes)));
    };
    EXPECT_EQ(text(Control::PantiltRelative, { 0xff, 21, 1, 0 }),
        "cam2 SET_CUR pantilt_relative pan=-1 pan_speed=21 tilt=+1 tilt_speed=0 [ff 15 01 00] ok");
    EXPECT_EQ(text(Control::ZoomRelative, { 1, 1, 255 }),
        "cam2 SET_CUR zoom_relative zoom=+1 digital=1 speed=255 [01 01 ff] ok");
    EXPECT_EQ(text(Control::FocusRelative, { 0, 0 }),
        "cam2 SET_CUR focus_relative focus=0 speed=0 [00 00] ok");
    EXPECT_EQ(
        text(Control::Brightness, { 0xc0, 0xff }), "cam2 SET_CUR brightness value=-64 [c0 ff] ok");
    EXPECT_EQ(
        text(Control::Contrast, { 0xc0, 0xff }), "cam2 SET_CUR contrast value=65472 [c0 ff] ok");
    EXPECT_EQ(text(Control::RollAbsolute, { 0x70, 0x11 }),
        "cam2 SET_CUR roll_absolute value=4464 (recall preset 4364) [70 11] ok");
    EXPECT_EQ(text(Control::RollAbsolute, { 0xff, 0xff }),
        "cam2 SET_CUR roll_absolute value=-1 (unknown command) [ff ff] ok");
}

TEST(LogText, ShowsBytesThatMeanNothing)
{
    EXPECT_EQ(toText(setRecord(Control::Gamma, { 1, 2, 3 })), "cam2 SET_CUR gamma [01 02 03] ok");
    ControlRequest unknown = getRequest(traits(Control::Gamma), RequestCode::GetCur);
    unknown.value = 0x1f00;
    unknown.request = 0x99;
    LogRecord record = requestRecord(unknown);
    record.result = LogRecord::Result::Stall;
    EXPECT_EQ(toText(record), "cam2 request=0x99 unit=2 selector=0x1f interface=0 stall");
}

TEST(LogText, DecodesLengthAndInfo)
{
    ControlRequest request = getRequest(traits(Control::Gamma), RequestCode::GetLen);
    request.data = { 2, 0 };
    EXPECT_EQ(toText(requestRecord(request)), "cam2 GET_LEN gamma length=2 [02 00] ok");
    request = getRequest(traits(Control::Gamma), RequestCode::GetInfo);
    request.data = { 3 };
    EXPECT_EQ(toText(requestRecord(request)), "cam2 GET_INFO gamma info=0x03 [03] ok");
}

TEST(RequestLog, KeepsTheLatestRecords)
{
    RequestLog log;
    LogRecord record;
    record.event = LogRecord::Event::Open;
    for (std::size_t i = 0; i < RequestLog::mostRecords + 2; ++i)
        log.add(record);
    EXPECT_EQ(log.all().size(), RequestLog::mostRecords);
    EXPECT_EQ(log.all().front().sequence, 3U);
}

TEST(LogText, HasLinesForPlugsAndFiles)
{
    LogRecord record;
    record.device = 1;
    record.file = 3;
    record.time = std::chrono::microseconds(1000042);
    record.event = LogRecord::Event::Open;
    EXPECT_EQ(toTimedText(record), "1.000042 cam1 OPEN file=3");
    record.event = LogRecord::Event::Close;
    EXPECT_EQ(toText(record), "cam1 CLOSE file=3");
    record.event = LogRecord::Event::Unplug;
    EXPECT_EQ(toText(record), "cam1 UNPLUG");
    record.event = LogRecord::Event::Replug;
    EXPECT_EQ(toText(record), "cam1 REPLUG");
}

TEST(Numbers, AreWholeWords)
{
    EXPECT_EQ(parseNumber("12"), 12);
    EXPECT_EQ(parseNumber("-12"), -12);
    EXPECT_EQ(parseNumber("0x1f"), 31);
    for (const char *wrong :
        { "", "-", "--1", "1x", "x", " 1", "0x", "+1", "99999999999999999999" })
        EXPECT_EQ(parseNumber(wrong), std::nullopt) << wrong;
}

TEST(CameraOptions, ChangeTheDescription)
{
    CameraDescription camera;
    EXPECT_EQ(applyOption(camera, "product", "Saal 1: Bühne"), std::nullopt);
    EXPECT_EQ(camera.product, "Saal 1: Bühne");
    EXPECT_EQ(applyOption(camera, "product-id", "0x1234"), std::nullopt);
    EXPECT_EQ(camera.productId, 0x1234);
    EXPECT_EQ(applyOption(camera, "brightness", "-64:64:0:100:2"), std::nullopt);
    EXPECT_EQ(camera.range(Control::Brightness).min, -64);
    EXPECT_EQ(camera.range(Control::Brightness).cur, 100);
    EXPECT_EQ(camera.range(Control::Brightness).res, 2);
    EXPECT_EQ(applyOption(camera, "tilt", "-3600:3600:0:0"), std::nullopt);
    EXPECT_EQ(camera.tilt.max, 3600);
    EXPECT_EQ(applyOption(camera, "without", "gamma"), std::nullopt);
    EXPECT_FALSE(camera.supports(Control::Gamma));
    EXPECT_EQ(applyOption(camera, "without", "camera_terminal"), std::nullopt);
    EXPECT_FALSE(camera.supports(Control::RollAbsolute));
    EXPECT_TRUE(camera.supports(Control::Contrast));
    EXPECT_EQ(applyOption(camera, "without", "processing_unit"), std::nullopt);
    EXPECT_FALSE(camera.supports(Control::Contrast));
    EXPECT_FALSE(camera.supports(Control::ExtensionValue));
    EXPECT_EQ(applyOption(camera, "with", "extension_unit"), std::nullopt);
    EXPECT_TRUE(camera.supports(Control::ExtensionValue));
    EXPECT_EQ(applyOption(camera, "uvc", "1.5"), std::nullopt);
    EXPECT_EQ(camera.videoClass, 0x0150);
}

TEST(CameraOptions, SayWhatIsWrong)
{
    const auto problem = [](const char *key, const char *value) {
        CameraDescription camera;
        return applyOption(camera, key, value).value_or("");
    };
    EXPECT_THAT(problem("colour", "1"), HasSubstr("no such option"));
    EXPECT_THAT(problem("brightness", "1:2:3"), HasSubstr("min:max"));
    EXPECT_THAT(problem("brightness", "1:2:3:x"), HasSubstr("'x' is not a number"));
    EXPECT_THAT(problem("contrast", "-1:2:3:4"), HasSubstr("outside 0..65535"));
    EXPECT_THAT(problem("without", "colour"), HasSubstr("no control"));
    EXPECT_THAT(problem("product-id", "65536"), HasSubstr("0xffff"));
    EXPECT_THAT(problem("zoom_relative", "1:2:3:4"), HasSubstr("no range"));
    EXPECT_THAT(problem("with", "wings"), HasSubstr("extension_unit"));
    EXPECT_THAT(problem("uvc", "2.0"), HasSubstr("1.5"));
}

ControlCommand command(const char *line)
{
    const auto parsed = parseControlCommand(line);
    EXPECT_TRUE(std::holds_alternative<ControlCommand>(parsed)) << line;
    const auto *found = std::get_if<ControlCommand>(&parsed);
    return found != nullptr ? *found : ControlCommand{};
}

TEST(ControlCommands, AreUnderstood)
{
    using Verb = ControlCommand::Verb;
    EXPECT_EQ(command("unplug 2").verb, Verb::Unplug);
    EXPECT_EQ(command("  unplug\t2 \r").device, 2);
    EXPECT_EQ(command("replug 2").number, std::nullopt);
    EXPECT_EQ(command("replug 2 17").number, 17);
    EXPECT_EQ(std::get<1>(command("go 1 pan=-3600").order.move(Motor::Pan)), -3600);
    EXPECT_EQ(command("go 1 pan=-3600").order.move(Motor::Tilt).index(), 0U);
    EXPECT_EQ(command("go 1 preset=3").order.preset, 3);
    EXPECT_EQ(command("delay 3 50").number, 50);
    EXPECT_EQ(command("refuse-open 1 EACCES").number, EACCES);
    EXPECT_EQ(command("refuse-open 1 none").number, 0);
    EXPECT_EQ(command("busy 1 on").number, 1);
    EXPECT_EQ(command("range 1 brightness -5:5:0:9").range.cur, 9);
    EXPECT_EQ(command("range 1 pan -5:7200:0:9").ranged.control, Control::PantiltAbsolute);
    EXPECT_EQ(command("range 1 pan -5:7200:0:9").ranged.field, 0U);
    EXPECT_EQ(command("range 1 tilt -5:7200:0:9").ranged.field, 1U);
    EXPECT_EQ(command("range 1 tilt -5:7200:0:9").range.max, 7200);
}

struct FaultRow
{
    const char *line;
    Fault::Effect effect;
    const char *word;
    const char *text;
};

class FaultCommand : public testing::TestWithParam<FaultRow>
{ };

TEST_P(FaultCommand, IsUnderstoodAndSpelledAgain)
{
    const auto &[line, effect, word, text] = GetParam();
    const ControlCommand read = command(line);
    EXPECT_EQ(read.verb, ControlCommand::Verb::AddFault);
    EXPECT_EQ(read.device, 1);
    EXPECT_EQ(read.fault.effect, effect);
    EXPECT_STREQ(faultWord(read.fault.effect), word);
    EXPECT_EQ(faultText(read.fault), text);
}

INSTANTIATE_TEST_SUITE_P(Of, FaultCommand,
    testing::Values(FaultRow{ "stall 1 all", Fault::Effect::Stall, "stall", "all" },
        FaultRow{ "stall 1 all get_min", Fault::Effect::Stall, "stall", "all GET_MIN" },
        FaultRow{ "stall 1 gamma", Fault::Effect::Stall, "stall", "gamma" },
        FaultRow{ "stall 1 gamma get_min", Fault::Effect::Stall, "stall", "gamma GET_MIN" },
        FaultRow{ "stall 1 descriptors at 3", Fault::Effect::Stall, "stall", "descriptors at 3" },
        FaultRow{
            "stall 1 gain SET_CUR every 2", Fault::Effect::Stall, "stall", "gain SET_CUR every 2" },
        FaultRow{ "short 1 gamma 0", Fault::Effect::Short, "short", "gamma 0" },
        FaultRow{
            "short 1 gamma GET_CUR 1 at 2", Fault::Effect::Short, "short", "gamma GET_CUR 1 at 2" },
        FaultRow{ "long 1 all 64", Fault::Effect::Long, "long", "all 64" },
        FaultRow{ "wrong 1 gamma share 30", Fault::Effect::Wrong, "wrong", "gamma share 30 1" },
        FaultRow{ "wrong 1 all share 30 4294967295", Fault::Effect::Wrong, "wrong",
            "all share 30 4294967295" },
        FaultRow{ "fail 1 gamma EPROTO", Fault::Effect::ProtocolError, "fail", "gamma EPROTO" },
        FaultRow{ "fail 1 descriptors ETIME at 1", Fault::Effect::NoResponse, "fail",
            "descriptors ETIME at 1" },
        FaultRow{ "lose-stop 1", Fault::Effect::LoseStop, "lose-stop", "" },
        FaultRow{ "lose-stop 1 every 3", Fault::Effect::LoseStop, "lose-stop", "every 3" }));

TEST(ControlCommands, SayWhatIsWrong)
{
    for (const char *line : { "", "   ", "dance", "unplug", "unplug x", "unplug 0", "unplug -1",
             "unplug 1 2", "replug 1 0", "replug 1 128", "stall 1", "stall 1 colour",
             "stall 1 gamma GET", "stall 1 gamma GET_CUR GET_MIN", "stall 1 descriptors GET_CUR",
             "stall 1 at 3", "stall 1 gamma at", "stall 1 gamma at 0", "stall 1 gamma at 1 2",
             "stall 1 gamma share 101", "stall 1 gamma share 1 -1", "fail 1 gamma",
             "fail 1 gamma EIO", "fail 1 EPROTO", "long 1 gamma", "wrong 1", "lose-stop 1 gamma",
             "go 1", "go 1 sideways", "go 1 pan", "go 1 pan=x", "go 1 left=0", "go 1 left=256",
             "go 1 left=", "go 1 home=1", "go 1 home left", "go 1 preset", "go 1 preset=-1",
             "go 1 preset=1 stop", "short 1 gamma", "short 1 gamma -1", "delay 1 -5",
             "delay 1 99999999999", "refuse-open 1 EWHAT", "busy 1 maybe", "range 1 gamma 1:2",
             "range 1 pantilt_absolute 1:2:3:4", "list 1", "unplug 99999999999999999999" }) {
        const auto parsed = parseControlCommand(line);
        ASSERT_TRUE(std::holds_alternative<std::string>(parsed)) << line;
        EXPECT_FALSE(std::get<std::string>(parsed).empty()) << line;
    }
}

TEST(ControlCommands, AreAllExplained)
{
    for (const char *word : { "help", "list", "describe", "state", "watch", "log", "unplug",
             "replug", "stall", "unstall", "go", "short", "full", "long", "wrong", "fail",
             "lose-stop", "delay", "refuse-open", "busy", "range", "clear" })
        EXPECT_THAT(controlCommandHelp(), HasSubstr(std::string("  ") + word)) << word;
}

std::string problemWith(std::vector<std::string> arguments)
{
    const auto parsed = parseCommandLine(arguments);
    const auto *problem = std::get_if<std::string>(&parsed);
    return problem != nullptr ? *problem : "";
}

CommandLine understood(const std::vector<std::string> &arguments)
{
    const auto parsed = parseCommandLine(arguments);
    const auto *line = std::get_if<CommandLine>(&parsed);
    EXPECT_NE(line, nullptr) << std::get<std::string>(parsed);
    return line != nullptr ? *line : CommandLine{};
}

TEST(CommandLineText, IsUnderstood)
{
    EXPECT_EQ(understood({ "--", "lsusb" }).devices.size(), 1U);
    EXPECT_EQ(understood({ "--cameras", "9", "lsusb", "-v" }).devices.size(), 9U);
    EXPECT_EQ(understood({ "--cameras=9", "lsusb", "-v" }).command,
        (std::vector<std::string>{ "lsusb", "-v" }));
    EXPECT_EQ(understood({ "--", "--cameras" }).command, std::vector<std::string>{ "--cameras" });
    EXPECT_EQ(understood({ "--log=-", "--control", "/s", "true" }).socket, "/s");
    EXPECT_EQ(understood({ "--help" }).mode, CommandLine::Mode::Help);
    EXPECT_EQ(understood({ "--version" }).mode, CommandLine::Mode::Version);
    EXPECT_EQ(understood({ "--tell", "/s", "unplug", "2" }).mode, CommandLine::Mode::Tell);
}

TEST(CommandLineText, DescribesDevices)
{
    const CommandLine line = understood({ "--option", "product=All", "--option", "3.product=One=1",
        "--devices", "storage,camera,other-camera", "true" });
    ASSERT_EQ(line.devices.size(), 3U);
    EXPECT_EQ(line.devices[0].kind, DeviceDescription::Kind::Storage);
    EXPECT_EQ(line.devices[1].camera.product, "All");
    EXPECT_EQ(line.devices[1].camera.productId, 0x8888);
    EXPECT_EQ(line.devices[2].camera.product, "One=1");
    EXPECT_NE(line.devices[2].camera.productId, 0x8888);
}

TEST(CommandLineText, SaysWhatIsWrong)
{
    EXPECT_THAT(problemWith({ "--foo" }), HasSubstr("Unknown option --foo"));
    EXPECT_THAT(problemWith({ "-x=1" }), HasSubstr("Unknown option -x"));
    EXPECT_THAT(problemWith({ "--cameras", "0", "true" }), HasSubstr("1 to 32"));
    EXPECT_THAT(problemWith({ "--cameras", "200", "true" }), HasSubstr("1 to 32"));
    EXPECT_THAT(problemWith({ "--cameras", "two", "true" }), HasSubstr("'two'"));
    EXPECT_THAT(problemWith({ "--cameras" }), HasSubstr("Missing argument for --cameras"));
    EXPECT_THAT(
        problemWith({ "--cameras", "1", "--devices", "camera", "true" }), HasSubstr("both"));
    EXPECT_THAT(problemWith({}), HasSubstr("no command"));
    EXPECT_THAT(problemWith({ "--" }), HasSubstr("no command"));
    EXPECT_THAT(problemWith({ "--devices", "camera,,camera", "true" }), HasSubstr("''"));
    EXPECT_THAT(problemWith({ "--option", "product", "true" }), HasSubstr("KEY=VALUE"));
    EXPECT_THAT(problemWith({ "--option", "2.product=x", "true" }), HasSubstr("no device '2'"));
    EXPECT_THAT(problemWith({ "--devices", "storage", "--option", "1.product=x", "true" }),
        HasSubstr("no camera"));
    EXPECT_THAT(problemWith({ "--at-start", "dance", "true" }), HasSubstr("dance"));
    EXPECT_THAT(problemWith({ "--log", "", "true" }), HasSubstr("a log needs"));
    EXPECT_THAT(problemWith({ "--tell", "/s" }), HasSubstr("--tell"));
}

} // namespace
