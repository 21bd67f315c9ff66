#include "db/messages.h"

namespace varion::db::messages {

std::string NoField(std::string_view name) {
  return "Pole \x84" + std::string(name) + "\x94 nie istnieje w zestawie rekordów.";
}
std::string NoFieldIndex(int index) {
  return "Pole o numerze " + std::to_string(index) + " nie istnieje w zestawie rekordów.";
}
std::string NotABlob(std::string_view name) {
  return "Pole \x84" + std::string(name) + "\x94 nie zawiera danych binarnych.";
}
std::string NoCurrentRecord() { return "Brak bieżącego rekordu: osiągnięto koniec zestawu rekordów."; }
std::string BadRecordsetShape() { return "Liczba wartości nie odpowiada liczbie pól zestawu rekordów."; }
std::string ConnectionClosed() { return "Połączenie z bazą danych jest zamknięte."; }
std::string ConnectionLost() { return "Połączenie z bazą danych zostało przerwane."; }
std::string TransactionActive() { return "Transakcja jest już rozpoczęta."; }
std::string NoTransaction() { return "Nie rozpoczęto transakcji."; }
std::string BadConnectionString(std::string_view reason) {
  return "Nieprawidłowy ciąg połączenia: " + std::string(reason);
}
std::string SqliteUnavailable() {
  return "Bezpośredni dostęp do SQLite nie jest dostępny w tej wersji biblioteki; należy użyć sterownika ODBC.";
}
std::string NotUpdatable(std::string_view sql) {
  return "Zestawu rekordów nie można aktualizować (instrukcja musi odczytywać jedną tabelę): " + std::string(sql);
}
std::string NoNewRecord() { return "Nie dodano nowego rekordu do zestawu rekordów."; }
std::string FieldTypeMismatch(std::string_view name) {
  return "Wartości nie można zapisać w polu \x84" + std::string(name) + "\x94: niezgodny typ danych.";
}
std::string NoParameter(int index) {
  return "Parametr o numerze " + std::to_string(index) + " nie istnieje w instrukcji.";
}
std::string StatementClosed() { return "Instrukcja została zamknięta razem z połączeniem."; }

}  // namespace varion::db::messages
