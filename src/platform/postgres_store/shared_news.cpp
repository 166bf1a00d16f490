#include "platform/postgres_store/shared_news.h"

#include <charconv>
#include <iterator>

namespace lineweir::platform {
namespace {

// The database takes no text of more.
constexpr std::size_t longest_text = 7000;

constexpr std::string_view account_word = "account ";
constexpr std::string_view caller_word = "caller ";
constexpr std::string_view studio_word = "studio ";
constexpr std::string_view all_words = "all";

std::string news_of(std::string_view word, const std::string& what) {
  return std::string(word) + what;
}

// Empty for what isn't told.
struct News {
  std::string operator()(const Account& account) const {
    return news_of(account_word, account.name);
  }
  std::string operator()(const AccountRemoval& removal) const {
    return news_of(account_word, removal.name);
  }
  std::string operator()(const AccountPassword& password) const {
    return news_of(account_word, password.name);
  }
  std::string operator()(const AccountLock& lock) const { return news_of(account_word, lock.name); }
  std::string operator()(const AccountRights& rights) const {
    return news_of(account_word, rights.name);
  }
  std::string operator()(const AccountProfile& profile) const {
    return news_of(account_word, profile.name);
  }
  std::string operator()(const FlaggedCaller& caller) const {
    return news_of(caller_word, caller.key);
  }
  std::string operator()(const StudioPlace& place) const {
    return news_of(studio_word, std::to_string(place.group));
  }
  template <class Other>
  std::string operator()(const Other&) const {
    return {};
  }
};

template <class Element>
void append(std::vector<Element>& all, std::vector<Element> some) {
  all.insert(all.end(), std::make_move_iterator(some.begin()), std::make_move_iterator(some.end()));
}

}  // namespace

PostgresStatement all_is_news() {
  return {"SELECT pg_notify('lineweir_news', $1)", {PostgresValue::text(std::string(all_words))}};
}

PostgresStatement listen_to_news() { return {"LISTEN lineweir_news"}; }

void append_news(PostgresStatements& statements, const StoreChange& change) {
  const std::string text = std::visit(News{}, change);
  if (text.empty() || text.size() > longest_text) return;
  statements.push_back({"SELECT pg_notify('lineweir_news', $1)", {PostgresValue::text(text)}});
}

void SharedNews::add(std::string_view text) {
  const auto rest_behind = [&](std::string_view word) {
    return std::string(text.substr(word.size()));
  };
  if (text == all_words) {
    add_all();
  } else if (text.starts_with(account_word)) {
    accounts_.insert(rest_behind(account_word));
  } else if (text.starts_with(caller_word)) {
    callers_.insert(rest_behind(caller_word));
  } else if (text.starts_with(studio_word)) {
    const std::string number = rest_behind(studio_word);
    int group = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), group);
    if (error == std::errc() && end == number.data() + number.size()) studios_.insert(group);
  }
}

void SharedNews::append_read(PostgresStatements& statements) const {
  if (all_) {
    append_accounts_read(statements);
    statements.push_back(flagged_callers_read());
    statements.push_back(studio_places_read());
    return;
  }
  for (const std::string& name : accounts_) append_account_read(statements, name);
  for (const std::string& key : callers_) statements.push_back(flagged_caller_read(key));
  for (const int group : studios_) statements.push_back(studio_place_read(group));
}

StoreNews SharedNews::read(const std::vector<PostgresRows>& rows, std::size_t skipped) const {
  StoreNews news{.all = all_};
  std::size_t row = skipped;
  if (all_) {
    news.accounts = accounts_of(rows.at(row), rows.at(row + 1));
    news.flagged_callers = flagged_callers_of(rows.at(row + 2));
    news.studio_places = studio_places_of(rows.at(row + 3));
    return news;
  }
  for (const std::string& name : accounts_) {
    auto found = accounts_of(rows.at(row), rows.at(row + 1));
    if (found.empty()) news.removed_accounts.push_back(name);
    append(news.accounts, std::move(found));
    row += 2;
  }
  for (const std::string& key : callers_) {
    auto found = flagged_callers_of(rows.at(row++));
    if (found.empty()) found.push_back({.key = key});
    append(news.flagged_callers, std::move(found));
  }
  for (const int group : studios_) {
    auto found = studio_places_of(rows.at(row++));
    if (found.empty()) found.push_back({.group = group});
    append(news.studio_places, std::move(found));
  }
  return news;
}

}  // namespace lineweir::platform
