#include "SkinReader.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <stdexcept>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Child.h"
#include "SkinDecoder.h"

namespace PEBBLETON
{

namespace
{

constexpr unsigned longestDecoding = 60; // seconds

bool writeAll(int iFile, const void* iData, std::size_t iSize)
{
    const char* data = static_cast<const char*>(iData);
    while (iSize > 0) {
        const ssize_t written = write(iFile, data, iSize);
        if (written < 0 && errno != EINTR) {
            return false;
        }
        data += std::max<ssize_t>(written, 0);
        iSize -= static_cast<std::size_t>(std::max<ssize_t>(written, 0));
    }
    return true;
}

// The child: sends the result, the pixels, and then whatever the decoders complained of.
int decode(const std::string& iPath, int iOutput)
{
    const struct rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    alarm(longestDecoding);
    SkinDecoderC decoder;
    const SkinDecoderC::Result result = decoder.Decode(iPath);
    const auto& pixels = decoder.GetPixels();
    const bool sent = writeAll(iOutput, &result, sizeof(result)) &&
                      writeAll(iOutput, pixels.data(), pixels.size() * sizeof(pixels[0]));
    return sent ? EXIT_SUCCESS : EXIT_FAILURE;
}

// What the decoders' libraries say of a picture that they mend as well as they can.
std::string findComplaint(const std::vector<std::string>& iMessages)
{
    for (const std::string& line : iMessages) {
        for (const char* start : {"Corrupt JPEG", "Premature end", "libpng", "(GIFLOADER)"}) {
            if (line.compare(0, std::strlen(start), start) == 0) {
                return line;
            }
        }
    }
    return "";
}

std::uint32_t littleEndian(const std::string& iBytes, std::size_t iOffset)
{
    std::uint32_t number = 0;
    for (std::size_t i = 4; i > 0; --i) {
        number = number << 8U | static_cast<unsigned char>(iBytes[iOffset + i - 1]);
    }
    return number;
}

// DirectFB's own format holds the rows as they lie in memory, and DirectFB reads past the end of a file cut short.
constexpr std::size_t rawHeaderSize = 24;

bool isRaw(const std::string& iHeader)
{
    return iHeader.size() == rawHeaderSize && iHeader.compare(0, 5, "DFIFF") == 0;
}

std::string describeRawDamage(const std::string& iHeader, std::uint64_t iFileSize)
{
    const std::uint64_t width = littleEndian(iHeader, 8);
    const std::uint64_t height = littleEndian(iHeader, 12);
    const std::uint32_t format = littleEndian(iHeader, 16);
    const std::uint64_t pitch = littleEndian(iHeader, 20);
    if (DFB_BYTES_PER_PIXEL(format) == 0) {
        return "the pixel format is none of DirectFB's";
    }
    if (pitch < DFB_BYTES_PER_LINE(format, width)) {
        return "the pitch is less than a row";
    }
    return iFileSize < rawHeaderSize + height * pitch ? "the file is cut short" : "";
}

std::string describeDamage(const std::string& iPath, const SkinDecoderC::Result& iResult,
                           const std::vector<std::string>& iMessages)
{
    std::ifstream file(iPath, std::ios::binary);
    std::string header(rawHeaderSize, '\0');
    file.read(header.data(), static_cast<std::streamsize>(header.size()));
    struct stat status = {};
    if (isRaw(header) && stat(iPath.c_str(), &status) == 0) {
        return describeRawDamage(header, static_cast<std::uint64_t>(status.st_size));
    }
    std::string complaint = findComplaint(iMessages);
    if (!complaint.empty()) {
        return complaint;
    }
    if (iResult.rendered != DFB_OK) {
        return DirectFBErrorString(iResult.rendered);
    }
    return iResult.odd == 0 ? "" : std::to_string(iResult.odd) + " pixels are not what the file holds";
}

// What the file itself has to say of why it cannot be read; empty: nothing.
std::string findReason(const std::string& iPath)
{
    const std::ifstream file(iPath);
    if (!file) {
        return std::strerror(errno);
    }
    struct stat status = {};
    return stat(iPath.c_str(), &status) == 0 && S_ISDIR(status.st_mode) ? "it is a directory" : "";
}

bool waitsForWriter(const std::string& iPath)
{
    struct stat status = {};
    return stat(iPath.c_str(), &status) == 0 && S_ISFIFO(status.st_mode);
}

unsigned exitStatus(const SkinDecoderC::Result& iResult)
{
    return static_cast<unsigned>(iResult.result) & 0xFFU;
}

std::string describeFailure(const SkinDecoderC::Result& iResult, const std::string& iReason)
{
    std::string reason = iReason.empty() ? DirectFBErrorString(iResult.result) : iReason;
    switch (iResult.step) {
    case SkinDecoderC::Step::Done:
        return "";
    case SkinDecoderC::Step::Start:
        throw std::runtime_error("DirectFB does not start: " + reason);
    case SkinDecoderC::Step::Allocate:
        reason = "DirectFB has no room for " + std::to_string(iResult.width) + 'x' + std::to_string(iResult.height) +
                 " pixels";
        break;
    case SkinDecoderC::Step::Open:
        if (iReason.empty() && iResult.result == DFB_NOIMPL) {
            reason = "DirectFB reads no file of this kind";
        }
        break;
    }
    return reason + ": the menu ends with the status " + std::to_string(exitStatus(iResult));
}

std::string describeSignal(int iSignal)
{
    return iSignal == SIGALRM ? std::string("DirectFB does not come to an end with it")
                              : "DirectFB crashes on it: the menu ends by signal " + std::to_string(iSignal) +
                                    ", which a shell reports as " + std::to_string(128 + iSignal);
}

// Takes over what the child sent: the result and the pixels.
void unpack(const ChildEnd& iEnd, Skin& ioSkin)
{
    SkinDecoderC::Result result = {};
    if (iEnd.status != EXIT_SUCCESS || iEnd.output.size() < sizeof(result)) {
        throw std::runtime_error("the process that decodes pictures failed");
    }
    std::memcpy(&result, iEnd.output.data(), sizeof(result));
    ioSkin.failure = describeFailure(result, findReason(ioSkin.path));
    if (!ioSkin.IsLoaded()) {
        ioSkin.outcome = "exit status " + std::to_string(exitStatus(result));
        return;
    }
    ioSkin.size = {result.width, result.height};
    ioSkin.damage = describeDamage(ioSkin.path, result, iEnd.messages);
    ioSkin.transparent = result.transparent;
    ioSkin.pixels.resize(static_cast<std::size_t>(result.width) * result.height);
    std::memcpy(ioSkin.pixels.data(), iEnd.output.data() + sizeof(result), iEnd.output.size() - sizeof(result));
    for (std::uint32_t& pixel : ioSkin.pixels) {
        pixel &= 0xFFFFFFU;
    }
}

} // namespace

Skin readSkin(const std::string& iPath)
{
    Skin skin = {iPath, "", "", false, {0, 0}, {}};
    if (waitsForWriter(iPath)) {
        skin.failure = "is a pipe, for which the menu may wait without end";
        return skin;
    }
    const ChildEnd end = runChild([&](int iOutput) { return decode(iPath, iOutput); });
    if (end.signal != 0) {
        skin.failure = describeSignal(end.signal);
        skin.outcome = end.signal == SIGALRM ? skin.outcome : "signal " + std::to_string(end.signal);
    } else {
        unpack(end, skin);
    }
    return skin;
}

} // namespace PEBBLETON
