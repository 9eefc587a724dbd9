// The fixture of the user-interface tests: a fresh session, the dialog file found where NX finds
// it (the test's own folder is the start folder, the repository's dialog/ the search path), and
// helpers to build the dialog, show it and act in it as the designer.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>
#include <NXOpen/Callback.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/UI.hxx>

#include "CoreFixture.hpp"
#include "Driver.hpp"

// The source tree, from CTest's environment or the working folder.
inline std::filesystem::path UiSourceDir() {
    const char* dir = std::getenv("VORNADEL_SOURCE_DIR");
    return dir != nullptr ? std::filesystem::path(dir) : std::filesystem::current_path();
}

class UiTest : public HostCoreTest {
protected:
    void SetUp() override {
        HostCoreTest::SetUp();
        host::SetStartFolder(folder_.string());
        host::SetDialogSearchPath({(UiSourceDir() / "dialog").string()});
    }

    void TearDown() override {
        delete dialog_;
        host::SetDialogScript(nullptr);
        host::SetMessageListener(nullptr);
        host::SetDialogSearchPath({});
        host::SetStartFolder("");
        HostCoreTest::TearDown();
    }

    // The dialog of Vornadel.dlx; the fixture deletes it.
    NXOpen::BlockStyler::BlockDialog* OpenDialog(const char* name = "Vornadel.dlx") {
        dialog_ = NXOpen::UI::GetUI()->CreateDialog(name);
        return dialog_;
    }

    template <class Block>
    Block* Find(const char* id) {
        return dynamic_cast<Block*>(dialog_->TopBlock()->FindBlock(id));
    }

    // Shows the dialog; the designer does what script does, then the dialog closes.
    NXOpen::Selection::Response ShowWith(std::function<void(host::LiveDialog&)> script) {
        host::SetDialogScript(std::move(script));
        return dialog_->Show();
    }

    // The message of the NXException that call throws, or "" when it throws none.
    static std::string NXErrorOf(const std::function<void()>& call) {
        try {
            call();
        } catch (const NXOpen::NXException& e) {
            return e.Message();
        }
        return "";
    }

    NXOpen::BlockStyler::BlockDialog* dialog_ = nullptr;
};

// A test with the dialog built and its tree given three columns (ids 0, 1, 2).
class TreeTest : public UiTest {
protected:
    void SetUp() override {
        UiTest::SetUp();
        OpenDialog();
        tree_ = Find<NXOpen::BlockStyler::Tree>("tree_control0");
        ASSERT_NE(nullptr, tree_);
        tree_->InsertColumn(0, "序号", 75);
        tree_->InsertColumn(1, "名称", 120);
        tree_->InsertColumn(2, "ID", 80);
    }

    // Creates a node with this display text and inserts it.
    NXOpen::BlockStyler::Node* Add(const char* text, NXOpen::BlockStyler::Node* parent = nullptr,
                                   NXOpen::BlockStyler::Node* after = nullptr,
                                   NXOpen::BlockStyler::Tree::NodeInsertOption option = NXOpen::BlockStyler::Tree::NodeInsertOptionLast) {
        NXOpen::BlockStyler::Node* node = tree_->CreateNode(text);
        tree_->InsertNode(node, parent, after, option);
        return node;
    }

    // The display texts of a level (parent NULL: the top level), comma-separated.
    std::string Level(NXOpen::BlockStyler::Node* parent = nullptr) {
        std::string texts;
        for (NXOpen::BlockStyler::Node* n = parent ? parent->FirstChildNode() : tree_->RootNode(); n; n = n->NextSiblingNode()) {
            texts += (texts.empty() ? "" : ",") + std::string(n->DisplayText().GetLocaleText());
        }
        return texts;
    }

    NXOpen::BlockStyler::Tree* tree_ = nullptr;
};
