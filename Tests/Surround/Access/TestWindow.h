/// A window that exists as data alone.
#ifndef VARNO_TESTS_SURROUND_ACCESS_TESTWINDOW_H
#define VARNO_TESTS_SURROUND_ACCESS_TESTWINDOW_H

#include "Surround/Access/AccessModel.h"

#include <string>
#include <vector>

namespace varno::test {

/// A window with a part of each kind, which does what it is asked to and keeps notes.
class TestWindow : public AccessWindow {
public:
    TestWindow();

    AccessNode describe() override {
        ++descriptions;
        return root;
    }
    bool setValue(const std::string& id, double value) override;
    bool setValueText(const std::string& id, const std::string& text) override;
    bool press(const std::string& id) override;
    bool grabFocus(const std::string& id) override;

    /// The part of that identifier, which must exist.
    AccessNode& part(const std::string& id);

    AccessNode root;
    std::vector<std::string> notes;
    int descriptions = 0;
    bool isWilling = true; ///< Otherwise it refuses everything.
};

} // namespace varno::test

#endif
