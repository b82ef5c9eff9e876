// Producer-invoice files for the tests, record by record, numbered as they are added.
#ifndef QUORVVALIDA_TESTS_INVOICES_ARQUIVO_NOTAS_HPP_
#define QUORVVALIDA_TESTS_INVOICES_ARQUIVO_NOTAS_HPP_

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "registro.hpp"

namespace quorv::teste {

class DiretorioTemporario;

// Width of an invoice line.
inline constexpr std::size_t kLarguraNotas = 160;

// Values of the valid records below, for tests that build on them.
inline constexpr std::string_view kEmitenteValido = "1231000001";      // municipality 123
inline constexpr std::string_view kDestinatarioValido = "4561234567";  // a producer elsewhere
inline constexpr std::string_view kEmissaoValida = "20240110";
inline constexpr std::string_view kCNPJValido = "11222333000181";

// A field to lay into a record: 1-based column, width and value.
struct Preenchimento {
  int coluna;
  int largura;
  const char* valor;
};

// Lays the fields into the record, in order.
Registro& Preenche(Registro& registro, const std::vector<Preenchimento>& campos);

class ArquivoNotas {
 public:
  // A record of the type with the next line number in columns 1-8, to be filled by the test.
  Registro& Novo(std::string_view tr);
  // A line taken as it is, of any length.
  void Bruta(std::string_view linha);

  // A header of layout version 1 that the header check accepts.
  Registro& CabecalhoV1();
  // A header of layout version 2 of the source type given (two digits).
  Registro& CabecalhoV2(std::string_view tipoFonte = "02");
  // A group opening.
  Registro& TR01();
  // A group closing declaring the records of the group since its TR 01.
  Registro& TR98();
  // A file trailer repeating the header and declaring the records of the file.
  Registro& TR99();

  // Records that their checks accept, so that a test changes only the field it is about: a
  // producer's note of municipality 123 (the version-1 header's) to a producer of the home state,
  // operation 5101, dated kEmissaoValida; a settlement document of type 2 issued by that note's
  // counterpart on the same day; a tax assessment notice drawn up after it. The state
  // registrations are made of digits only.
  Registro& TR10Valido();
  Registro& TR20Valido();
  Registro& TR40Valido();

  // The record added at the 0-based position.
  Registro& Linha(std::size_t indice) { return registros_.at(indice); }
  std::vector<std::string> Linhas() const;
  // Writes the file (lines ended by CR LF) into the directory and returns its path.
  std::string Grava(const DiretorioTemporario& diretorio,
                    std::string_view nome = "remessa.txt") const;

 private:
  std::deque<Registro> registros_;
};

}  // namespace quorv::teste

#endif  // QUORVVALIDA_TESTS_INVOICES_ARQUIVO_NOTAS_HPP_
