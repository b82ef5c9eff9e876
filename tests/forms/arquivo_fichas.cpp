#include "arquivo_fichas.hpp"

#include "arquivos.hpp"

namespace quorv::teste {

using namespace fichas_padrao;

Registro& ArquivoFichas::Novo(std::string_view tr) {
  Registro& registro = registros_.emplace_back(kLarguraFichas);
  registro.Numero(1, 8, static_cast<long long>(registros_.size()));
  registro.Campo(9, 3, tr);
  return registro;
}

void ArquivoFichas::Bruta(std::string_view linha) {
  Registro& registro = registros_.emplace_back(linha.size());
  if (!linha.empty()) registro.Campo(1, static_cast<int>(linha.size()), linha);
}

Registro& ArquivoFichas::Padrao(std::string_view tr) {
  if (tr == "001") return Cabecalho();
  if (tr == "100") return TR100();
  if (tr == "110") return TR110();
  if (tr == "111") return TR111();
  if (tr == "115") return TR115();
  if (tr == "120" || tr == "125" || tr == "130" || tr == "145") return Pessoa(tr);
  if (tr == "121" || tr == "126" || tr == "131") return NomePessoa(tr);
  if (tr == "140") return TR140();
  if (tr == "999") return Trailer();
  return DaSolicitacao(tr);
}

Registro& ArquivoFichas::Cabecalho() {
  return Novo("001")
      .Campo(33, 3, "123")
      .Campo(36, 25, "CIDADE DE TESTE")
      .Campo(61, 6, "000001")
      .Campo(67, 8, "20240115")
      .Campo(75, 10, "1.0");
}

Registro& ArquivoFichas::TR100(std::string_view numero) {
  solicitacao_ = std::string(numero);
  return Novo("100").Campo(12, 10, numero).Campo(22, 1, "1");
}

Registro& ArquivoFichas::TR110() {
  return DaSolicitacao("110")
      .Campo(42, 8, kInicioAtividade)
      .Campo(50, 8, kSemData)
      .Campo(136, 7, "0000100")
      .Campo(143, 2, "01")
      .Campo(145, 2, "00")
      .Campo(147, 2, "01");
}

Registro& ArquivoFichas::TR111() {
  return DaSolicitacao("111")
      .Campo(22, 2, "01")
      .Campo(24, 8, kInicioAtividade)
      .Campo(32, 8, kSemData);
}

Registro& ArquivoFichas::TR115() {
  return DaSolicitacao("115")
      .Campo(22, 7, "0111301")
      .Campo(29, 8, kInicioAtividade)
      .Campo(37, 8, kSemData)
      .Campo(45, 1, "1");
}

Registro& ArquivoFichas::Pessoa(std::string_view tr) {
  return NomePessoa(tr).Campo(64, 46, "").Campo(227, 8, kSemData);
}

Registro& ArquivoFichas::NomePessoa(std::string_view tr) {
  return DaSolicitacao(tr)
      .Campo(22, 8, kCodigoPrefeitura)
      .Campo(30, 8, kCodigoEstadual)
      .Campo(38, 1, kTipoPessoa)
      .Campo(39, 11, kCPF)
      .Campo(64, 46, kNome);
}

Registro& ArquivoFichas::TR140() {
  return DaSolicitacao("140")
      .Campo(22, 3, "123")
      .Campo(25, 1, "1")
      .Campo(26, 8, "00012345")
      .Campo(34, 7, "0000100")
      .Campo(41, 2, "01")
      .Campo(43, 7, "0000080")
      .Campo(50, 8, kInicioAtividade)
      .Campo(58, 8, kSemData);
}

Registro& ArquivoFichas::DaSolicitacao(std::string_view tr) {
  return Novo(tr).Campo(12, 10, solicitacao_);
}

Registro& ArquivoFichas::Trailer() {
  return Novo("999");
}

void ArquivoFichas::SolicitacaoCompleta(std::string_view numero) {
  TR100(numero);
  TR110();
  TR111();
  TR115();
  Pessoa("120");
  NomePessoa("121");
  TR140();
  DaSolicitacao("199");
}

std::vector<std::string> ArquivoFichas::Linhas() const {
  std::vector<std::string> linhas;
  for (const Registro& registro : registros_)
    linhas.push_back(registro.Texto());
  return linhas;
}

std::string ArquivoFichas::Grava(const DiretorioTemporario& diretorio, std::string_view nome,
                                 std::string_view fim) const {
  const std::string caminho = diretorio.Arquivo(nome);
  GravaBytes(caminho, JuntaLinhas(Linhas(), fim));
  return caminho;
}

}  // namespace quorv::teste
