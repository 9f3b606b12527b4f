// A listener that sees whether commands keep what Command.h promises of them.
#pragma once

#include "tests/support/NodeTableSink.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace test {

class CheckingSink : public NodeTableSink {
public:
    std::string faults; ///< a line each

    void requirePlugin(std::string_view plugin, std::string_view version,
                       std::span<const std::string_view> nodeTypes) override
    {
        checkText(plugin);
        checkText(version);
        for (const std::string_view type : nodeTypes) {
            checkText(type);
        }
        NodeTableSink::requirePlugin(plugin, version, nodeTypes);
    }
    void fileInfo(std::string_view key, std::string_view value) override
    {
        checkText(key);
        checkText(value);
        NodeTableSink::fileInfo(key, value);
    }
    void createNode(const host::file::CreateNode& command) override
    {
        expect(!command.type.empty(), "a node without a type");
        checkText(command.type);
        checkText(command.name);
        checkText(command.parent);
        NodeTableSink::createNode(command);
    }
    void uuid(std::string_view uuid) override
    {
        expect(uuid.size() == 36, "an id of another length");
        NodeTableSink::uuid(uuid);
    }
    void addAttribute(const host::file::AddAttribute& command) override
    {
        expect(!command.longName.empty(), "an attribute without a name");
        expect(command.childCount >= 0, "less than no children");
        checkText(command.longName);
        checkText(command.shortName);
        checkText(command.parent);
        NodeTableSink::addAttribute(command);
    }
    void setAttribute(const host::file::SetAttribute& command) override
    {
        expect(command.plug.stepCount > 0, "a plug without an attribute");
        for (std::size_t i = 0; i < command.plug.stepCount; ++i) {
            const host::PlugStep& step = command.plug.steps[i];
            checkText(step.name);
            expect(step.first >= -1 && step.last >= step.first, "a range backwards");
        }
        using Payload = host::file::SetAttribute::Payload;
        if (command.payload == Payload::Numbers) {
            checkNumbers(command.numbers);
        } else if (command.payload == Payload::Faces) {
            checkFaces(*command.faces);
        } else if (command.payload == Payload::Value) {
            expect(!command.values.empty(), "no value");
        }
        NodeTableSink::setAttribute(command);
    }
    void connect(const host::file::Connection& command) override
    {
        checkText(command.source);
        checkText(command.destination);
        NodeTableSink::connect(command);
    }

private:
    void expect(bool isTrue, std::string_view fault)
    {
        if (!isTrue) {
            faults += fault;
            faults += '\n';
        }
    }

    /// UTF-8 without a zero byte.
    void checkText(std::string_view text)
    {
        expect(text.find('\0') == std::string_view::npos, "a text with a zero byte");
        std::size_t following = 0;
        for (const char c : text) {
            const auto byte = static_cast<unsigned char>(c);
            const bool isFollowing = (byte & 0xc0) == 0x80;
            if (isFollowing != (following > 0)) {
                expect(false, "a text that is no UTF-8");
                return;
            }
            following = isFollowing   ? following - 1
                        : byte < 0xc0 ? 0
                        : byte < 0xe0 ? 1
                        : byte < 0xf0 ? 2
                                      : 3;
        }
        expect(following == 0, "a text that ends inside a character");
    }

    void checkNumbers(const host::file::NumberBlock& block)
    {
        const std::size_t sizes[] = {block.floats.size(), block.doubles.size(),
                                     block.integers.size()};
        const auto storage = static_cast<std::size_t>(block.storage);
        expect(block.width > 0 && block.numberCount() > 0, "no numbers");
        expect(sizes[storage] == block.numberCount(), "numbers of another storage");
        expect(block.width == 0 || block.numberCount() % block.width == 0, "part of an element");
    }

    void checkFaces(const host::PolyFaces& faces)
    {
        std::size_t loops = 0;
        std::size_t corners = 0;
        for (const std::uint32_t count : faces.faceLoopCounts) {
            loops += count;
        }
        for (const std::uint32_t size : faces.loopSizes) {
            corners += size;
        }
        expect(loops == faces.loopSizes.size(), "loops of no face");
        expect(corners == faces.corners.size(), "corners of no loop");
        for (const auto& set : faces.uvSets) {
            expect(set.ids.size() == corners, "ids of no corner");
        }
    }
};

} // namespace test
