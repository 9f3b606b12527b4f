#include "host/file/readScene.h"

#include "host/file/ascii/readAscii.h"
#include "host/file/binary/readBinary.h"

namespace host::file {

SceneFormat recogniseFormat(std::string_view firstBytes)
{
    constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
    if (firstBytes.starts_with("FOR4") || firstBytes.starts_with("FOR8")) {
        return SceneFormat::Binary;
    }
    if (firstBytes.starts_with(kByteOrderMark)) {
        firstBytes.remove_prefix(kByteOrderMark.size());
    }
    return firstBytes.starts_with("//Maya") ? SceneFormat::Ascii : SceneFormat::Unknown;
}

Expected<void> readScene(std::span<const char> bytes, CommandSink& sink, const ReadOptions& options)
{
    switch (recogniseFormat({bytes.data(), bytes.size()})) {
    case SceneFormat::Ascii:
        return readAscii(bytes, sink, options);
    case SceneFormat::Binary:
        return readBinary(bytes, sink, options);
    case SceneFormat::Unknown:
        break;
    }
    return Error{ErrorCode::BadInput,
                 "the file begins neither with //Maya nor with FOR4 or FOR8: it is no Maya scene",
                 {}};
}

} // namespace host::file
