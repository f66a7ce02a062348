// Prompts where nobody answers: each counts as closed.
#pragma once

#include "ui/widgets/prompts.h"

namespace zorvanelink::test {

class NoPrompts : public ui::Prompts {
  public:
    int Box(ui::BoxRequest const&) override { return -1; }
    std::optional<ui::SecretAnswer> InputSecret(ui::SecretRequest const&) override {
        return std::nullopt;
    }
    std::optional<QString> ChooseFile(ui::FileRequest const&) override { return std::nullopt; }
};

}  // namespace zorvanelink::test
