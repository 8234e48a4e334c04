#pragma once

#include "platform/ViewController.h"

#include <QPointer>
#include <QUrl>
#include <functional>

namespace ekinora::videos {

// What a player plays: its end is announced on the notification centre with the item as the sender.
class PlayerItem : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    // Posts AVPlayerItemDidPlayToEndTimeNotification.
    void didPlayToEnd();
};

inline const QString PlayerItemDidPlayToEndTimeNotification = QStringLiteral("AVPlayerItemDidPlayToEndTimeNotification");

// A player of one address; the view's media player does the playing.
class Player : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(AVPlayer)
    QML_UNCREATABLE("Made by a screen.")
    Q_PROPERTY(QUrl url READ url CONSTANT)
    Q_PROPERTY(bool playing READ isPlaying NOTIFY playingChanged)
public:
    explicit Player(const QUrl& url, QObject* parent = nullptr);
    QUrl url() const { return m_url; }
    bool isPlaying() const { return m_playing; }
    PlayerItem* currentItem() const { return m_item; }
    void play();
    // The view's media player reached the end.
    Q_INVOKABLE void reachedEnd();

signals:
    void playingChanged();

private:
    QUrl m_url;
    bool m_playing = false;
    PlayerItem* m_item;
};

// The full-screen player: black until it is given a player, then the video, turned to landscape while
// the interface stands so, and a close button.
class PlayerViewController : public ekinora::platform::ViewController {
    Q_OBJECT
    QML_NAMED_ELEMENT(AVPlayerViewController)
    QML_UNCREATABLE("Made by a screen.")
    Q_PROPERTY(ekinora::videos::Player* player READ player NOTIFY playerChanged)
    Q_PROPERTY(bool landscape READ landscape NOTIFY landscapeChanged)
public:
    explicit PlayerViewController(QObject* parent = nullptr);
    QUrl viewSource() const override;

    // Over the full screen, the list staying beneath: a dismissal by the service's failure leaves the
    // list as it was, while the user's close makes it appear again (set by the presenter).
    std::function<void()> userDidClose;

    Player* player() const { return m_player; }
    void setPlayer(Player* player);
    bool landscape() const;

public slots:
    void close(QObject* sender = nullptr);

signals:
    void playerChanged();
    void landscapeChanged();

private:
    QPointer<Player> m_player;
};

} // namespace ekinora::videos
