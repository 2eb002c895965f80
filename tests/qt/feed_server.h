// A server on the loopback that answers each request, once its head is there, in the way it is
// told.
#pragma once

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {

class FeedServer {
  public:
    using Answer = std::function<void(QTcpSocket&)>;

    explicit FeedServer(Answer answer)
        : FeedServer(std::make_unique<QTcpServer>(), std::move(answer)) {}
    FeedServer(std::unique_ptr<QTcpServer> server, Answer answer)
        : answer_(std::move(answer)), server_(std::move(server)) {
        QObject::connect(server_.get(), &QTcpServer::pendingConnectionAvailable, server_.get(),
                         [this] { accept(); });
        EXPECT_TRUE(server_->listen(QHostAddress::LocalHost));
    }

    std::string address(const char* scheme = "http") const {
        return std::string(scheme) + "://127.0.0.1:" + std::to_string(server_->serverPort()) +
               "/feed.json";
    }

    /// The heads of the requests, oldest first.
    std::vector<std::string> requests;

    /// A whole answer: the status and other lines of the head, and the body.
    static Answer sends(const std::string& head, const std::string& body) {
        return [head, body](QTcpSocket& socket) {
            const auto text = "HTTP/1.1 " + head +
                              "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" +
                              body;
            socket.write(text.data(), static_cast<qint64>(text.size()));
        };
    }

    /// An answer that never ends. `left` is set when the other side has gone.
    static Answer sendsForEver(const std::string& start, const std::string& part, bool& left) {
        return [start, part, &left](QTcpSocket& socket) {
            QObject::connect(&socket, &QTcpSocket::disconnected, &socket, [&left] { left = true; });
            QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, [&socket, part] {
                if (socket.bytesToWrite() == 0) {
                    socket.write(part.data(), static_cast<qint64>(part.size()));
                }
            });
            socket.write(start.data(), static_cast<qint64>(start.size()));
        };
    }

  private:
    void accept() {
        auto* const socket = server_->nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::readyRead, server_.get(),
                         [this, socket, head = std::string()]() mutable {
                             head += socket->readAll().toStdString();
                             if (head.ends_with("\r\n\r\n")) {
                                 requests.push_back(std::exchange(head, {}));
                                 answer_(*socket);
                             }
                         });
    }

    Answer answer_;
    std::unique_ptr<QTcpServer> server_;
};

}  // namespace tessellon
