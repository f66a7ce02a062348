// Prompts where nobody answers: each counts as closed.
#pragma once

#include "ui/widgets/prompts.h"

namespace zorvanelink::test {

class NoPrompts : public ui::Prompts {
  public:
    int Box(ui::BoxRequest const& request) override {
        last = request;
        return -1;
    }
    std::optional<ui::SecretAnswer> InputSecret(ui::SecretRequest const& request) override {
        lastSecret = request;
        return std::nullopt;
    }
    std::vector<QString> ChooseFiles(ui::FileRequest const&) override { return files; }

    ui::BoxRequest last;  // what would have been shown
    ui::SecretRequest lastSecret;
    std::vector<QString> files;  // what is chosen
};

}  // namespace zorvanelink::test
