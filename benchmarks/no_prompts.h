// For a benchmark in which nobody is asked: a prompt ends it.
#pragma once

#include <cstdlib>

#include "ui/widgets/prompts.h"

namespace zorvanelink::bench {

class NoPrompts : public ui::Prompts {
  public:
    int Box(ui::BoxRequest const&) override { std::abort(); }
    std::optional<ui::SecretAnswer> InputSecret(ui::SecretRequest const&) override { std::abort(); }
    std::optional<QString> ChooseFile(ui::FileRequest const&) override { std::abort(); }
};

}  // namespace zorvanelink::bench
