#include "PlayerViewController.h"

#include "DeviceOrientation.h"
#include "platform/Platform.h"

namespace ekinora::videos {

using namespace platform;

void PlayerItem::didPlayToEnd() {
    Platform::current().notificationCenter().postNotificationName(PlayerItemDidPlayToEndTimeNotification, this);
}

Player::Player(const QUrl& url, QObject* parent) : QObject(parent), m_url(url), m_item(new PlayerItem(this)) {}

void Player::play() {
    if (m_playing) return;
    m_playing = true;
    emit playingChanged();
}

void Player::reachedEnd() {
    if (!m_playing) return;
    m_playing = false;
    emit playingChanged();
    m_item->didPlayToEnd();
}

PlayerViewController::PlayerViewController(QObject* parent) : ViewController(parent) {
    modalPresentationStyle = 5; // over the full screen
    connect(&DeviceOrientation::current(), &DeviceOrientation::changed, this, &PlayerViewController::landscapeChanged);
}

QUrl PlayerViewController::viewSource() const { return QUrl(QStringLiteral("qrc:/qt/qml/Ekinora/Videos/PlayerView.qml")); }

void PlayerViewController::setPlayer(Player* player) {
    if (player) player->setParent(this);
    m_player = player;
    emit playerChanged();
}

bool PlayerViewController::landscape() const { return DeviceOrientation::current().interfaceIsLandscape(); }

void PlayerViewController::close(QObject*) {
    std::function<void()> closed = userDidClose;
    dismissViewControllerAnimated(true);
    if (closed) closed();
}

} // namespace ekinora::videos
