// Fixed-width lines written field by field, numbered as they are written, ended by CR LF.
#ifndef QUORVVALIDA_TOOLS_GERADOR_LINHAS_HPP_
#define QUORVVALIDA_TOOLS_GERADOR_LINHAS_HPP_

#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <string_view>

namespace quorv::gerador {

// A state registration of `digitos` digits that the test stand-in of the state-registration
// library accepts (its last digit is the sum of the others modulo 10), from a prefix and a
// serial number.
std::string Inscricao(std::string_view prefixo, std::uint64_t serie, std::size_t digitos);

// Digits of a number with leading zeros to the width.
std::string Zeros(std::uint64_t valor, std::size_t largura);

// A date yyyymmdd a number of days after a date (days beyond a month's end roll over).
std::string DataMaisDias(int ano, int mes, int dia, int dias);

class Linhas {
 public:
  // Lines of `largura` characters with the record type in columns 9 to 9 + `larguraTipo`.
  Linhas(std::FILE* saida, std::size_t largura, std::size_t larguraTipo);

  // Starts the next line: blanks, its number in columns 1-8 and its record type.
  Linhas& Novo(std::string_view tipo);
  // Lays a value at the 1-based column, padded with blanks to the width.
  Linhas& Campo(int coluna, int largura, std::string_view valor);
  // Writes the line.
  void Grava();

  std::uint64_t Escritas() const { return numero_; }
  // Lines of a record type written so far (all of the file, or since the last Zera).
  std::uint64_t Quantos(std::string_view tipo) const;
  void Zera() { parciais_.clear(); }
  std::uint64_t QuantosDesdeZera(std::string_view tipo) const;

 private:
  std::FILE* saida_;
  std::size_t larguraTipo_;
  std::string linha_;
  std::uint64_t numero_ = 0;
  std::map<std::string, std::uint64_t, std::less<>> totais_;
  std::map<std::string, std::uint64_t, std::less<>> parciais_;
};

// Writes an invoice file of about `quantas` lines; with `defeitos` most records carry several
// faults, but the frame and the counts stay right so that the whole file is read.
void GeraNotas(std::FILE* saida, std::uint64_t quantas, bool defeitos);

// Writes a registration-form file of about `quantas` lines, clean or with faults.
void GeraFichas(std::FILE* saida, std::uint64_t quantas, bool defeitos);

}  // namespace quorv::gerador

#endif  // QUORVVALIDA_TOOLS_GERADOR_LINHAS_HPP_
