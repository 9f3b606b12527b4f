// A listener that drops everything: what a benchmark is not about.
#pragma once

#include "host/file/Command.h"

#include <cstddef>

/// Counts only what could not be read. Says of no attribute what it takes.
class IdleSink : public host::file::CommandSink {
public:
    std::size_t damages = 0;

    void at(const host::file::Place&) override {}
    void requirePlugin(std::string_view, std::string_view,
                       std::span<const std::string_view>) override
    {
    }
    void currentUnit(const host::file::Units&) override {}
    void fileInfo(std::string_view, std::string_view) override {}
    void reference(const host::file::Reference&) override {}
    void createNode(const host::file::CreateNode&) override {}
    void renameNode(std::string_view) override {}
    void uuid(std::string_view) override {}
    void selectNode(std::string_view) override {}
    void parentNodes(const host::file::ParentNodes&) override {}
    void lockNode(bool) override {}
    void addAttribute(const host::file::AddAttribute&) override {}
    host::PlugShape shapeOf(const host::PlugPath&) override { return {}; }
    void setAttribute(const host::file::SetAttribute&) override {}
    void connect(const host::file::Connection&) override {}
    void disconnect(const host::file::Connection&) override {}
    void unknown(std::string_view) override {}
    void damaged(std::string_view, std::string_view) override { ++damages; }
    void endOfScene() override {}
};
