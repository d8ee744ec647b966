// Instances of the host library beside each other, for judges of threads that watch a whole program. With the
// argument --race a client counts its blocks, and what is done beside them, in the same plain number, which
// every judge must report.
#include "Tests/RealTime/AtOnce.h"
#include "Tests/RealTime/LibraryClient.h"

#include <cstdio>
#include <string_view>
#include <utility>

namespace varno::test {
namespace {

constexpr std::int64_t kBlocks = 5000;
constexpr std::int64_t kRacingBlocks = 50;
constexpr std::size_t kClients = 3;

class RacingClient : public LibraryClient {
public:
    void process(int frames) override {
        LibraryClient::process(frames);
        ++mCount;
    }
    void disturb(std::mt19937& ioRandom) override {
        LibraryClient::disturb(ioRandom);
        ++mCount;
    }

private:
    int mCount = 0;
};

template<class Client>
std::unique_ptr<AudioClient> makeClient() {
    return std::make_unique<Client>();
}

constexpr AudioClientEntry kOthers[] = {{"HostLibrary", makeClient<LibraryClient>}};

// Returns whether the sound was finite and every contract held.
bool runAtOnce(bool isRacing) {
    std::vector<std::unique_ptr<AudioClient>> clients;
    while (clients.size() < kClients) {
        clients.push_back(isRacing ? makeClient<RacingClient>() : makeClient<LibraryClient>());
    }
    AtOnce atOnce(std::move(clients), kOthers);
    atOnce.run(isRacing ? kRacingBlocks : kBlocks);
    const std::string complaints = atOnce.complaints();
    std::printf("%lld blocks\n%s", static_cast<long long>(atOnce.blocks()), complaints.c_str());
    return atOnce.isFinite() && complaints.empty();
}

} // namespace
} // namespace varno::test

int main(int count, char** arguments) {
    const bool isRacing = count > 1 && std::string_view(arguments[1]) == "--race";
    return varno::test::runAtOnce(isRacing) ? 0 : 1;
}
