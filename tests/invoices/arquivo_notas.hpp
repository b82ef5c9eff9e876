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
