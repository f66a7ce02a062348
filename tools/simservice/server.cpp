#include "tools/simservice/server.h"

#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <utility>

#include "components/ipc/port_file.h"
#include "components/logger/logger.h"
#include "tools/simservice/notices.h"

namespace zorvanelink::simservice {
namespace {

using components::ipc::SocketIPCServer;
using components::logger::Log;

// A client that looks for signs of life gives up after two seconds without one.
constexpr auto kHeartbeatPeriod = Scheduler::Milliseconds(200);

constexpr char kOk[] = "ok\n";

}  // namespace

Server::Server(Options const& options, Scenario const& scenario, EventLoop& loop,
               Terminal& terminal, Recorder& recorder)
    : options_(options),
      scenario_(scenario),
      loop_(loop),
      terminal_(terminal),
      recorder_(recorder),
      port_(options.port),
      outbox_(loop,
              [this](std::string_view bytes) {
                  if (link_) {
                      link_->AsyncSend(bytes.data(), bytes.size());
                  }
              }),
      session_(
          scenario, loop,
          {[this](std::string const& json) { outbox_.SendMessage(json); },
           [this](std::string const& line) { terminal_.Say(line); },
           [this](Moment moment) { faults_.Happened(moment); },
           [this](std::function<void(bool)> answered) { return loginAt(std::move(answered)); }}),
      faults_(scenario.faults, loop, [this](Action const& action) {
          if (auto const answer = perform(action); answer.starts_with("error")) {
              terminal_.Say(answer.substr(0, answer.find('\n')));
          }
      }) {
}

// The one login that is open has the latest mark.
std::string Server::loginAt(std::function<void(bool yes)> answered) {
    ++login_;
    login_answered_ = std::move(answered);
    if (!login_server_) {
        auto const report = [this](std::string const& mark, bool yes) {
            loop_.Post([this, mark, yes] {
                if (mark == std::to_string(login_) && login_answered_) {
                    std::exchange(login_answered_, {})(yes);
                }
            });
        };
        login_server_ = std::make_unique<LoginServer>(report);
    }
    return login_server_->Address(std::to_string(login_));
}

Server::~Server() {
    Stop();
}

bool Server::Start(std::string& error) {
    if (!openLink(error)) {
        return false;
    }
    loop_.After(kHeartbeatPeriod, [this] { heartbeat(); });
    return true;
}

bool Server::openLink(std::string& error) {
    ++generation_;
    link_ = std::make_shared<SocketIPCServer>(
        nullptr, components::ipc::PortPlace{port_, options_.port_file});
    registerHandlers();
    bool const runs = link_->Run();
    if (runs) {
        port_ = link_->Port();
    } else {
        error = link_->TakeErrorText();
    }
    drainTexts();
    if (runs && components::ipc::ReadPortFile(options_.port_file) != port_) {
        closeLink();
        error = fmt::format("{}: cannot be written", options_.port_file);
        return false;
    }
    return runs;
}

// All of them run on the link's worker, which must not wait: they only post to the loop.
void Server::registerHandlers() {
    leaving_ = std::make_shared<std::atomic<Leaving>>(Leaving::kQuit);
    auto const weak = std::weak_ptr(link_);
    link_->RegisterIPCMsgCallback(components::ipc::kIPCCommon, [this, generation = generation_](
                                                                   char const* data, int length) {
        std::string json(data, length > 0 ? static_cast<std::size_t>(length) : 0);
        loop_.Post([this, generation, json = std::move(json)] { received(generation, json); });
    });
    link_->SetHeartbeatErrorHandler([weak, leaving = leaving_](int) {
        // Until the place is freed no other client is taken.
        if (auto const link = weak.lock()) {
            leaving->store(Leaving::kLost);
            link->DisconnectClient();
        }
    });
    link_->SetClientConnectedHandler([this, weak, leaving = leaving_, generation = generation_] {
        leaving->store(Leaving::kQuit);
        if (auto const link = weak.lock()) {
            link->SetClientDisconnectedHandler("simservice", [this, leaving, generation] {
                loop_.Post(
                    [this, generation, how = leaving->load()] { linkDown(generation, how); });
            });
        }
        loop_.Post([this, generation] { linkUp(generation); });
    });
}

void Server::closeLink() {
    auto const link = std::exchange(link_, nullptr);
    if (link) {
        link->Stop();
        linkDown(generation_, Leaving::kVanished);
    }
}

void Server::Stop() {
    bool const running = link_ != nullptr;
    closeLink();
    if (running && components::ipc::ReadPortFile(options_.port_file) == port_) {
        unlink(options_.port_file.c_str());
    }
}

void Server::linkUp(std::uint64_t generation) {
    if (generation != generation_ || !link_) {
        return;
    }
    linked_ = true;
    outbox_.Clear();
    recorder_.Event("connected");
    terminal_.Say("client linked");
    session_.LinkUp();
}

void Server::linkDown(std::uint64_t generation, Leaving leaving) {
    if (generation != generation_ || !std::exchange(linked_, false)) {
        return;
    }
    outbox_.Clear();
    recorder_.Event(leaving == Leaving::kQuit ? "quit" : "disconnected");
    terminal_.Say(leaving == Leaving::kQuit   ? "client said goodbye"
                  : leaving == Leaving::kLost ? "client gone"
                                              : "client cut off");
    session_.LinkDown();
}

void Server::received(std::uint64_t generation, std::string const& json) {
    if (generation != generation_ || !linked_) {
        return;
    }
    recorder_.Message(json);
    Log().debug("received {}", MaskedMessage(json));
    session_.Receive(json);
}

// Sent from here and not by the link's own timer: it must stay silent with the rest, and never
// stand in the middle of a frame that goes out in pieces.
void Server::heartbeat() {
    if (linked_) {
        outbox_.SendHeartbeat();
    }
    drainTexts();
    loop_.After(kHeartbeatPeriod, [this] { heartbeat(); });
}

void Server::drainTexts() {
    if (!link_ || !link_->HasTexts()) {
        return;
    }
    if (auto const text = link_->TakeErrorText(); !text.empty()) {
        Log().error("{}", text);
    }
    if (auto const text = link_->TakeInfoText(); !text.empty()) {
        Log().info("{}", text);
    }
    if (auto const text = link_->TakeDebugText(); !text.empty()) {
        Log().debug("{}", text);
    }
}

void Server::restart(int delay_ms, int port) {
    closeLink();
    if (port > 0) {
        port_ = static_cast<std::uint16_t>(port);
    }
    terminal_.Say(fmt::format("stopped, back in {} ms", delay_ms));
    loop_.After(Scheduler::Milliseconds(delay_ms), [this, stopped = generation_] {
        std::string error;
        if (stopped != generation_) {
            return;  // another restart was quicker
        }
        if (openLink(error)) {
            terminal_.Say(fmt::format("started again on port {}", port_));
        } else {
            terminal_.Say(fmt::format("cannot start again: {}", error));
        }
    });
}

std::string Server::Order(std::string const& line) {
    Action action;
    std::string error;
    if (!ParseAction(line, action, error)) {
        return fmt::format("error: {}\n", error);
    }
    return perform(action);
}

void Server::OnSignal(int signal) {
    if (signal == SIGUSR1) {
        faults_.Happened(Moment::kSignal);
    } else {
        loop_.Quit();
    }
}

std::string Server::state() const {
    static constexpr std::array<char const*, 4> kNames{"idle", "connecting", "online",
                                                       "reconnecting"};
    return fmt::format("ok link={} session={} port={} profile={}\n", linked_ ? "up" : "down",
                       kNames[static_cast<std::size_t>(session_.GetState())], port_,
                       session_.ProfileName());
}

std::string Server::perform(Action const& action) {
    switch (action.kind) {
        case ActionKind::kVanish:
            if (link_) {
                leaving_->store(Leaving::kVanished);
                link_->DisconnectClient();
            }
            break;
        case ActionKind::kRestart:
            restart(action.first, action.second);
            break;
        case ActionKind::kJunk:
            outbox_.SetJunk(action.first);
            break;
        case ActionKind::kSplit:
            outbox_.SetSplit(action.first);
            break;
        case ActionKind::kSlow:
            outbox_.SetSlow(action.first);
            break;
        case ActionKind::kSilence:
            outbox_.SetSilent(action.first != 0);
            break;
        case ActionKind::kHold:
            outbox_.SetHold(action.first != 0);
            break;
        case ActionKind::kSend:
            outbox_.SendMessage(action.text);
            break;
        case ActionKind::kState:
            return state();
        case ActionKind::kHelp:
            return ActionHelp() + kOk;
        case ActionKind::kQuit:
            loop_.Quit();
            break;
        default:
            return performInSession(action);
    }
    return kOk;
}

std::string Server::performInSession(Action const& action) {
    auto const& profile = session_.ProfileName();
    switch (action.kind) {
        case ActionKind::kFlood:
            session_.Flood(action.first, static_cast<common::MsgCode>(action.second));
            break;
        case ActionKind::kStatus:
            session_.SendStatus(static_cast<common::MsgCode>(action.first), action.text);
            break;
        case ActionKind::kOffline:
            session_.SendStatus(common::MsgCode::OFFLINE);
            break;
        case ActionKind::kMessage:
            outbox_.SendMessage(ServerMessage(profile, action.text));
            break;
        case ActionKind::kDisconnect:
            session_.Disconnect(action.first);
            break;
        case ActionKind::kReconnect:
            return session_.Reconnect(action.first) ? kOk : "error: nothing is online\n";
        case ActionKind::kRoute:
            outbox_.SendMessage(DomainRoute(scenario_.netconfig, profile, action.text));
            break;
        case ActionKind::kDetectStop:
            outbox_.SendMessage(DetectStop(profile, action.text));
            break;
        case ActionKind::kGateways:
            return tellList(action, "gateways", &Session::TellGateways);
        case ActionKind::kClusters:
            return tellList(action, "clusters", &Session::TellClusters);
        case ActionKind::kVnic:
            session_.SetVnic(action.first != 0);
            break;
        default:
            break;
    }
    return kOk;
}

std::string Server::tellList(Action const& action, char const* key,
                             void (Session::*tell)(Scenario const&)) {
    Scenario given;
    std::string error;
    if (action.text.empty()) {
        (session_.*tell)(scenario_);
    } else if (ParseScenario(fmt::format("{{\"{}\": {}}}", key, action.text), "line", given,
                             error)) {
        (session_.*tell)(given);
    } else {
        return fmt::format("error: {}\n", error);
    }
    return kOk;
}

}  // namespace zorvanelink::simservice
