// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// How a picture format is negotiated with cameras of each release of the USB Video Class.

#include "tests/virtual_camera/model_test_support.h"
#include "virtual_camera/camera/little_endian.h"

#include <gmock/gmock.h>

using namespace virtual_camera;

namespace {

constexpr int probe = 1;
constexpr int commit = 2;

struct ReleaseRow
{
    const char *name;
    std::uint16_t videoClass;
    std::size_t size;
};

class Streaming : public testing::TestWithParam<ReleaseRow>
{
protected:
    static CameraDescription description()
    {
        CameraDescription description;
        description.videoClass = GetParam().videoClass;
        return description;
    }
    static ControlRequest request(int selector, RequestCode code, std::size_t length)
    {
        ControlRequest request;
        request.requestType = code == RequestCode::SetCur ? 0x21 : 0xa1;
        request.request = static_cast<std::uint8_t>(code);
        request.value = static_cast<std::uint16_t>(selector << 8);
        request.index = streamingInterface;
        request.length = static_cast<std::uint16_t>(length);
        return request;
    }
    Answer get(int selector, RequestCode code, std::size_t length)
    {
        return camera.model.answer(request(selector, code, length));
    }
    bool takes(int selector, const Bytes &block)
    {
        ControlRequest set = request(selector, RequestCode::SetCur, block.size());
        set.data = block;
        return !camera.model.answer(set).stalled;
    }
    Bytes answered(int selector) { return get(selector, RequestCode::GetCur, 64).data; }

    CameraOnTheBench camera{ description() };
};

TEST_P(Streaming, HasABlockAsLongAsItsReleaseSays)
{
    for (const int selector : { probe, commit }) {
        EXPECT_EQ(answered(selector).size(), GetParam().size);
        EXPECT_EQ(get(selector, RequestCode::GetLen, 2).data,
            (Bytes{ static_cast<std::uint8_t>(GetParam().size), 0 }));
        EXPECT_EQ(get(selector, RequestCode::GetInfo, 1).data, Bytes{ 0x03 });
    }
}

TEST_P(Streaming, AnswersNoMoreThanIsAskedFor)
{
    const Bytes whole = answered(probe);
    for (const std::size_t length : { 0U, 1U, 25U, 26U, 33U, 34U, 47U, 48U }) {
        const Answer answer = get(probe, RequestCode::GetCur, length);
        EXPECT_FALSE(answer.stalled) << length;
        EXPECT_EQ(answer.data.size(), std::min(length, whole.size())) << length;
    }
}

TEST_P(Streaming, AnswersEveryProposalWithItsOneFormat)
{
    Bytes wish = answered(probe);
    const Bytes format = wish;
    wish[2] = 7; // another format
    EXPECT_TRUE(takes(probe, wish));
    EXPECT_EQ(answered(probe), format);
    EXPECT_EQ(readUnsigned(&format[4], 4), 333333U);
    EXPECT_EQ(readUnsigned(&format[18], 4), 1920U * 1080 * 2);
    for (const RequestCode code : { RequestCode::GetMin, RequestCode::GetMax, RequestCode::GetDef })
        EXPECT_EQ(get(probe, code, 64).data, format);
}

TEST_P(Streaming, CommitsToItsOneFormatOnly)
{
    Bytes block = answered(probe);
    EXPECT_TRUE(takes(commit, block));
    EXPECT_EQ(answered(commit), block);
    block[3] = 2; // another picture size
    EXPECT_FALSE(takes(commit, block));
    EXPECT_EQ(camera.model.lastError(), RequestError::OutOfRange);
    for (const RequestCode code : { RequestCode::GetMin, RequestCode::GetMax, RequestCode::GetDef })
        EXPECT_TRUE(get(commit, code, 64).stalled) << "what is settled has no range";
}

TEST_P(Streaming, TakesBlocksOfItsOwnAndOlderReleases)
{
    for (const std::size_t size : { 0U, 1U, 25U, 26U, 27U, 34U, 35U, 48U, 49U }) {
        Bytes block = answered(probe);
        block.resize(size);
        const bool known = size == 26 || size == 34 || size == 48;
        EXPECT_EQ(takes(probe, block), known && size <= GetParam().size) << size;
    }
}

TEST_P(Streaming, RefusesWhatItDoesNotKnow)
{
    EXPECT_TRUE(get(9, RequestCode::GetCur, 64).stalled);
    EXPECT_EQ(camera.model.lastError(), RequestError::InvalidControl);
    EXPECT_TRUE(get(probe, static_cast<RequestCode>(0x88), 64).stalled);
    EXPECT_EQ(camera.model.lastError(), RequestError::InvalidRequest);
    ControlRequest reading = request(probe, RequestCode::SetCur, 26);
    reading.requestType = 0xa1;
    EXPECT_TRUE(camera.model.answer(reading).stalled);
    ControlRequest entity = request(probe, RequestCode::GetCur, 26);
    entity.index |= 0x0100U;
    EXPECT_TRUE(camera.model.answer(entity).stalled);
    EXPECT_EQ(camera.model.lastError(), RequestError::InvalidUnit);
}

INSTANTIATE_TEST_SUITE_P(OfRelease, Streaming,
    testing::Values(ReleaseRow{ "Uvc10", 0x0100, 26 }, ReleaseRow{ "Uvc11", 0x0110, 34 },
        ReleaseRow{ "Uvc15", 0x0150, 48 }),
    [](const auto &row) { return row.param.name; });

} // namespace
