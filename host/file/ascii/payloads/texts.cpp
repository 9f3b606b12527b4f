// string, stringArray, componentList, attributeAlias.
#include "host/file/ascii/payloads/Cursor.h"
#include "host/file/ascii/payloads/payloads.h"

#include <algorithm>

namespace host::file::ascii {
namespace {

template<class T>
Expected<Value> valueOr(const Cursor& cursor, T data)
{
    if (cursor.hasFailed()) {
        return cursor.error();
    }
    return Value::of(std::move(data));
}

std::vector<std::string> countedTexts(Cursor& cursor)
{
    std::vector<std::string> texts;
    const std::size_t count = cursor.count(1);
    for (std::size_t i = 0; i < count && !cursor.hasFailed(); ++i) {
        texts.push_back(cursor.text());
    }
    return texts;
}

} // namespace

Expected<Value> readString(Reader& reader)
{
    Cursor cursor(reader);
    std::string text = cursor.text();
    return valueOr(cursor, std::move(text));
}

Expected<Value> readStringArray(Reader& reader)
{
    Cursor cursor(reader);
    std::vector<std::string> texts = countedTexts(cursor);
    return valueOr(cursor, std::move(texts));
}

Expected<Value> readComponentList(Reader& reader)
{
    Cursor cursor(reader);
    ComponentList list{countedTexts(cursor)};
    return valueOr(cursor, std::move(list));
}

Expected<Value> readAttributeAlias(Reader& reader)
{
    Scanner& scanner = reader.scanner;
    std::vector<std::string> texts;
    if (!scanner.take().isMark('{')) {
        return Error{ErrorCode::BadInput, "an opening brace was expected", {}};
    }
    while (true) {
        const Token token = scanner.take();
        if (token.isMark('}')) {
            return Value::of(std::move(texts));
        }
        if (token.kind == Token::Kind::String) {
            scanner.appendText(token, texts.emplace_back());
            continue;
        }
        const bool isComma = token.kind == Token::Kind::Word &&
                             token.text.find_first_not_of(',') == std::string_view::npos;
        if (!isComma) {
            return Error{ErrorCode::BadInput, "a string or a closing brace was expected", {}};
        }
    }
}

} // namespace host::file::ascii
