#include "engine/MeteringManager.h"

#include <cmath>

namespace vorix {

MeterClient::MeterClient(MeteringManager* manager)
    : manager_(manager), value_(manager->Floor()), floor_(manager->Floor()) {}

float MeterClient::Read() noexcept {
    const int32_t now = manager_->Now();
    read_ = true;
    const int32_t hold = holdTicks_;
    // Ticks wrap; compare by difference.
    if (hold != 0 && now - (lastTick_.Load() + hold) > 0) {
        lastTick_ = now;
        value_ = floor_;
    }
    const float value = value_;
    return manager_->IsLinear() ? value : std::pow(10.0f, value / 20.0f);
}

MeteringManager::MeteringManager(bool linear, MeterTickSource ticks)
    : linear_(linear), ticks_(ticks) {}

void MeteringManager::Give(MeterClient& client, float value, int32_t now) noexcept {
    client.read_ = false;
    client.value_ = value;
    client.lastTick_ = now;
}

void MeteringManager::SetPeak(float peak) noexcept {
    value_ = peak;
    const int32_t now = ticks_();
    for (const auto& client : clients_) {
        // Until the client reads, the highest peak since its last change stays.
        if (peak <= client->value_ && !client->read_) continue;
        Give(*client, peak, now);
    }
}

void MeteringManager::Reset() noexcept {
    value_ = Floor();
    const int32_t now = ticks_();
    for (const auto& client : clients_) Give(*client, Floor(), now);
}

MeterClient* MeteringManager::AddClient() {
    clients_.push_back(std::make_unique<MeterClient>(this));
    return clients_.back().get();
}

}  // namespace vorix
