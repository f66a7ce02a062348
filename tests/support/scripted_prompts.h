// Prompts that a test answers from a queue. An unexpected prompt, or one that never came, fails
// the test.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <variant>

#include "components/utils/sensitive_value.h"
#include "ui/widgets/prompts.h"

namespace zorvanelink::test {

// What a prompt answers when the user has typed that.
inline ui::SecretAnswer SecretOf(std::string const& typed, bool remember = false) {
    return {components::utils::EncodeSensitiveValue(typed), remember};
}

class ScriptedPrompts : public ui::Prompts {
  public:
    ~ScriptedPrompts() override {
        EXPECT_TRUE(answers_.empty()) << answers_.size() << " expected prompts never came";
    }

    // The next prompt must be a box whose text is this one.
    // `during` runs while the box stands, as what arrives in its nested event loop would.
    void ExpectBox(QString text, int answer, std::function<void()> during = {}) {
        answers_.push_back(BoxAnswer{std::move(text), answer, std::move(during)});
    }
    void ExpectSecret(std::optional<ui::SecretAnswer> answer, std::function<void()> during = {}) {
        answers_.push_back(Secret{std::move(answer), std::move(during)});
    }
    void ExpectFiles(std::vector<QString> answer) { answers_.push_back(std::move(answer)); }
    void ExpectFile(std::optional<QString> answer) {
        ExpectFiles(answer ? std::vector{*answer} : std::vector<QString>());
    }

    // How often what stands was to be closed. A box or prompt during which that happens answers as
    // a closed one, whatever was scripted.
    int Closings() const { return closings_; }

    // From here on any box is closed unread; for tests that count them.
    void CloseAnyBox() { close_any_box_ = true; }

    // Addresses are only taken down.
    void FailToOpen(bool fail) { fail_to_open_ = fail; }
    std::vector<QUrl> const& Opened() const { return opened_; }

    bool Finished() const { return answers_.empty(); }
    std::vector<ui::BoxRequest> const& Boxes() const { return boxes_; }
    std::vector<ui::SecretRequest> const& Secrets() const { return secrets_; }

    int Box(ui::BoxRequest const& request) override {
        boxes_.push_back(request);
        if (close_any_box_) {
            return -1;
        }
        auto const answer = next<BoxAnswer>(request.text);
        if (!answer) {
            return -1;
        }
        EXPECT_EQ(request.text.toStdString(), answer->text.toStdString());
        return standing(answer->during) ? answer->button : -1;
    }

    std::optional<ui::SecretAnswer> InputSecret(ui::SecretRequest const& request) override {
        secrets_.push_back(request);
        auto answer = next<Secret>(request.title);
        if (!answer) {
            return std::nullopt;
        }
        return standing(answer->during) ? answer->answer : std::nullopt;
    }

    std::vector<QString> ChooseFiles(ui::FileRequest const& request) override {
        return next<std::vector<QString>>(request.title).value_or(std::vector<QString>());
    }

    bool OpenUrl(QUrl const& url) override {
        opened_.push_back(url);
        return !fail_to_open_;
    }

    void CloseAll() override { ++closings_; }

  private:
    struct BoxAnswer {
        QString text;
        int button;
        std::function<void()> during;
    };
    struct Secret {
        std::optional<ui::SecretAnswer> answer;
        std::function<void()> during;
    };
    using Answer = std::variant<BoxAnswer, Secret, std::vector<QString>>;

    template <class T>
    std::optional<T> next(QString const& what) {
        if (answers_.empty() || !std::holds_alternative<T>(answers_.front())) {
            ADD_FAILURE() << "unexpected prompt: " << what.toStdString();
            return std::nullopt;
        }
        T answer = std::get<T>(std::move(answers_.front()));
        answers_.pop_front();
        return answer;
    }

    // Whether what stands while this happens is still there afterwards.
    bool standing(std::function<void()> const& during) const {
        int const before = closings_;
        if (during) {
            during();
        }
        return closings_ == before;
    }

    std::deque<Answer> answers_;
    std::vector<ui::BoxRequest> boxes_;
    std::vector<ui::SecretRequest> secrets_;
    std::vector<QUrl> opened_;
    int closings_ = 0;
    bool fail_to_open_ = false;
    bool close_any_box_ = false;
};

}  // namespace zorvanelink::test
