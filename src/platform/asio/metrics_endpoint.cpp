#include "platform/asio/metrics_endpoint.h"

#include <limits>
#include <utility>

#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>

#include "platform/asio/open_port.h"

namespace lineweir::platform {

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;
using asio::ip::tcp;
using beast::error_code;

constexpr std::uint32_t longest_header = 8192;

http::response<http::string_body> answer(const http::request<http::empty_body>& request,
                                         const std::function<std::string()>& text) {
  http::response<http::string_body> response;
  response.version(request.version());
  response.keep_alive(false);
  response.set(http::field::content_type, "text/plain; charset=utf-8");
  const beast::string_view path = request.target().substr(0, request.target().find('?'));
  if (path != "/metrics") {
    response.result(http::status::not_found);
    response.body() = "There is only /metrics.\n";
  } else if (request.method() != http::verb::get) {
    response.result(http::status::method_not_allowed);
    response.set(http::field::allow, "GET");
    response.body() = "The figures can only be read.\n";
  } else {
    response.set(http::field::content_type, "text/plain; version=0.0.4; charset=utf-8");
    response.body() = text();
  }
  // Its length is told also where a head alone was asked for.
  response.prepare_payload();
  if (request.method() == http::verb::head) response.body().clear();
  return response;
}

}  // namespace

// One connection, from its request to its end. What is under way holds it.
class MetricsEndpoint::Asker : public std::enable_shared_from_this<Asker> {
 public:
  Asker(tcp::socket peer, std::shared_ptr<const std::function<std::string()>> text)
      : stream_(std::move(peer)), text_(std::move(text)) {
    parser_.header_limit(longest_header);
    // None is read, however long it calls itself.
    parser_.body_limit(std::numeric_limits<std::uint64_t>::max());
  }

  void read() {
    stream_.expires_after(MetricsEndpoint::longest_request);
    http::async_read_header(stream_, buffer_, parser_,
                            [self = shared_from_this()](const error_code& error, std::size_t) {
                              if (!error) self->write();
                            });
  }

  void close() { stream_.close(); }

 private:
  void write() {
    response_ = answer(parser_.get(), *text_);
    http::async_write(stream_, response_,
                      [self = shared_from_this()](const error_code& error, std::size_t) {
                        error_code ignored;
                        if (!error)
                          self->stream_.socket().shutdown(tcp::socket::shutdown_send, ignored);
                      });
  }

  beast::tcp_stream stream_;
  beast::flat_buffer buffer_{longest_header};
  http::request_parser<http::empty_body> parser_;
  http::response<http::string_body> response_;
  std::shared_ptr<const std::function<std::string()>> text_;
};

class MetricsEndpoint::Inside : public std::enable_shared_from_this<Inside> {
 public:
  Inside(AsioLoop& loop, const std::string& address, std::uint16_t port,
         std::function<std::string()> text)
      : acceptor_(open_port(loop.context(), address, port)),
        pause_(loop.context()),
        text_(std::make_shared<const std::function<std::string()>>(std::move(text))) {}

  std::uint16_t port() const { return acceptor_.local_endpoint().port(); }

  void accept() {
    acceptor_.async_accept([self = shared_from_this()](const error_code& error, tcp::socket peer) {
      if (self->closed_) return;
      if (error) {
        self->accept_later();
        return;
      }
      self->let_ask(std::move(peer));
      self->accept();
    });
  }

  void close() {
    closed_ = true;
    error_code ignored;
    acceptor_.close(ignored);
    pause_.cancel();
    for (const auto& asker : askers_) {
      if (const auto here = asker.lock()) here->close();
    }
  }

 private:
  void accept_later() {
    pause_.expires_after(pause_without_descriptors);
    pause_.async_wait([self = shared_from_this()](const error_code&) {
      if (!self->closed_) self->accept();
    });
  }

  void let_ask(tcp::socket peer) {
    std::erase_if(askers_, [](const auto& asker) { return asker.expired(); });
    if (askers_.size() >= most_askers) return;
    const auto asker = std::make_shared<Asker>(std::move(peer), text_);
    askers_.push_back(asker);
    asker->read();
  }

  tcp::acceptor acceptor_;
  asio::steady_timer pause_;
  std::shared_ptr<const std::function<std::string()>> text_;
  std::vector<std::weak_ptr<Asker>> askers_;
  bool closed_ = false;
};

MetricsEndpoint::MetricsEndpoint(AsioLoop& loop, const std::string& address, std::uint16_t port,
                                 std::function<std::string()> text)
    : inside_(std::make_shared<Inside>(loop, address, port, std::move(text))) {
  inside_->accept();
}

MetricsEndpoint::~MetricsEndpoint() { inside_->close(); }

std::uint16_t MetricsEndpoint::port() const { return inside_->port(); }

}  // namespace lineweir::platform
