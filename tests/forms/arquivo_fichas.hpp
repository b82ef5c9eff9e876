// Registration-form files for the tests, record by record, numbered as they are added. Every
// default record is valid field by field for a request numbered as the last TR 100 added and an
// establishment active since 2020-01-01.
#ifndef QUORVVALIDA_TESTS_FORMS_ARQUIVO_FICHAS_HPP_
#define QUORVVALIDA_TESTS_FORMS_ARQUIVO_FICHAS_HPP_

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "registro.hpp"

namespace quorv::teste {

class DiretorioTemporario;

// Width of a form line.
inline constexpr std::size_t kLarguraFichas = 260;

// Fields of the default records that tests compare with or change.
namespace fichas_padrao {
inline constexpr std::string_view kSolicitacao = "0000000001";
inline constexpr std::string_view kInicioAtividade = "20200101";
inline constexpr std::string_view kSemData = "00000000";
inline constexpr std::string_view kCodigoPrefeitura = "00000012";
inline constexpr std::string_view kCodigoEstadual = "00001234";
inline constexpr std::string_view kTipoPessoa = "F";
inline constexpr std::string_view kCPF = "12345678909";
inline constexpr std::string_view kNome = "FULANO DE TAL";
}  // namespace fichas_padrao

class ArquivoFichas {
 public:
  // A record of the type (three digits) with the next line number in columns 1-8, to be filled
  // by the test.
  Registro& Novo(std::string_view tr);
  // A line taken as it is, of any length.
  void Bruta(std::string_view linha);

  // The default record of a type given as three digits ("001" the header, "999" the trailer).
  Registro& Padrao(std::string_view tr);

  Registro& Cabecalho();
  // Opens a request; the records added after it carry its number.
  Registro& TR100(std::string_view numero = fichas_padrao::kSolicitacao);
  Registro& TR110();
  Registro& TR111();
  Registro& TR115();
  // Persons (holder, participant, legal representative, owner) and their name records, which
  // repeat the default person's identification.
  Registro& Pessoa(std::string_view tr);
  Registro& NomePessoa(std::string_view tr);
  Registro& TR140();
  // Records whose fields are not examined: the request number only.
  Registro& DaSolicitacao(std::string_view tr);
  Registro& Trailer();

  // A request with TR 100, 110, 111, 115, 120, 121, 140 and 199.
  void SolicitacaoCompleta(std::string_view numero);

  // The record added at the 0-based position.
  Registro& Linha(std::size_t indice) { return registros_.at(indice); }
  std::size_t Tamanho() const { return registros_.size(); }
  std::vector<std::string> Linhas() const;
  // Writes the file into the directory, each line followed by the line end, and returns its path.
  std::string Grava(const DiretorioTemporario& diretorio, std::string_view nome = "remessa.txt",
                    std::string_view fim = "\r\n") const;

 private:
  std::deque<Registro> registros_;
  std::string solicitacao_ = std::string(fichas_padrao::kSolicitacao);
};

}  // namespace quorv::teste

#endif  // QUORVVALIDA_TESTS_FORMS_ARQUIVO_FICHAS_HPP_
