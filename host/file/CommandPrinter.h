// A listener that prints each command as one line of stable text: to keep as an expectation, and to
// compare what two formats say of one scene.
#pragma once

#include "host/file/Command.h"
#include "host/file/PayloadText.h"

#include <functional>
#include <string>
#include <string_view>

namespace host::file {

/// Lines do not depend on how a reader cuts its payloads: pieces that follow each other along a
/// plug are one line, values are a line each. Long payloads are their first numbers, a count and a
/// digest. Numbers have the fewest digits that give them back; texts are quoted, with escapes.
class CommandPrinter : public CommandSink {
public:
    using Write = std::function<void(std::string_view line)>; ///< one line, its break included

    /// `next`, if any, gets every command after it was printed, and answers `shapeOf`; without it
    /// all attributes are unknown.
    explicit CommandPrinter(Write write, CommandSink* next = nullptr);

    void at(const Place& place) override;
    void requirePlugin(std::string_view plugin, std::string_view version,
                       std::span<const std::string_view> nodeTypes) override;
    void currentUnit(const Units& units) override;
    void fileInfo(std::string_view key, std::string_view value) override;
    void reference(const Reference& reference) override;
    void createNode(const CreateNode& command) override;
    void renameNode(std::string_view newName) override;
    void uuid(std::string_view uuid) override;
    void selectNode(std::string_view name) override;
    void parentNodes(const ParentNodes& command) override;
    void lockNode(bool isLocked) override;
    void addAttribute(const AddAttribute& command) override;
    PlugShape shapeOf(const PlugPath& plug) override;
    void setAttribute(const SetAttribute& command) override;
    void connect(const Connection& command) override;
    void disconnect(const Connection& command) override;
    void unknown(std::string_view word) override;
    void damaged(std::string_view word, std::string_view reason) override;
    void endOfScene() override;

private:
    /// A payload that may still go on with the next command.
    struct Pending {
        SetAttribute::Payload payload = SetAttribute::Payload::None;
        std::string head; ///< the plug around the running index
        std::string tail;
        std::int64_t first = -1;
        std::int64_t next = -1; ///< index that a continuation begins with
        std::string form;       ///< storage and width of numbers
        PayloadText text;
    };

    void print(std::string line);
    void flush();
    void printSettings(const SetAttribute& command);
    void printValues(const SetAttribute& command);
    void collect(const SetAttribute& command);
    void printConnection(std::string_view word, const Connection& command);

    Write m_write;
    CommandSink* m_next;
    Pending m_pending;
    std::string m_lastSettings; ///< flags and size are printed once for all pieces of a plug
};

} // namespace host::file
