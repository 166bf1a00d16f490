#include "platform/postgres_store/column_values.h"
#include "platform/postgres_store/record_statements.h"

namespace lineweir::platform {

PostgresStatement studio_places_read() {
  return {"SELECT group_number, name, address FROM studio_places ORDER BY group_number"};
}

PostgresStatement studio_place_read(int group) {
  return {"SELECT group_number, name, address FROM studio_places WHERE group_number = $1",
          {PostgresValue::number(group)}};
}

std::vector<StudioPlace> studio_places_of(const PostgresRows& rows) {
  std::vector<StudioPlace> places;
  for (int row = 0; row < rows.count(); ++row) {
    places.push_back({.group = number_of(rows, row, 0),
                      .name = rows.text(row, 1),
                      .address = rows.text(row, 2)});
  }
  return places;
}

PostgresStatement studio_place_write(const StudioPlace& place) {
  const auto group = PostgresValue::number(place.group);
  if (place.address.empty()) {
    return {"DELETE FROM studio_places WHERE group_number = $1", {group}};
  }
  return {
      "INSERT INTO studio_places (group_number, name, address) VALUES ($1, $2, $3) "
      "ON CONFLICT (group_number) DO UPDATE SET name = excluded.name, address = excluded.address",
      {group, PostgresValue::text(place.name), PostgresValue::text(place.address)}};
}

}  // namespace lineweir::platform
