#include "arquivo_notas.hpp"

#include <map>

#include "arquivos.hpp"

namespace quorv::teste {
namespace {

// Columns of the declared counts: TR 98 (width 6) and TR 99 (width 8), for TR 10 to 35.
constexpr std::string_view kTiposContados[] = {"10", "15", "20", "25", "30", "35"};
constexpr int kColunasTR98[] = {11, 17, 23, 29, 35, 41};
constexpr int kColunasTR99[] = {84, 92, 100, 108, 116, 124};

std::string_view TipoDe(const Registro& registro) {
  const std::string& texto = registro.Texto();
  return texto.size() >= 10 ? std::string_view(texto).substr(8, 2) : std::string_view();
}

}  // namespace

Registro& ArquivoNotas::Novo(std::string_view tr) {
  Registro& registro = registros_.emplace_back(kLarguraNotas);
  registro.Numero(1, 8, static_cast<long long>(registros_.size()));
  registro.Campo(9, 2, tr);
  return registro;
}

void ArquivoNotas::Bruta(std::string_view linha) {
  registros_.emplace_back(linha.size()).Campo(1, static_cast<int>(linha.size()), linha);
}

Registro& ArquivoNotas::CabecalhoV1() {
  return Novo("00")
      .Campo(32, 3, "123")
      .Campo(35, 25, "CIDADE DE TESTE")
      .Campo(60, 6, "000001")
      .Campo(66, 8, "20240115")
      .Campo(74, 10, "1.0")
      .Campo(84, 1, " ");
}

Registro& ArquivoNotas::CabecalhoV2(std::string_view tipoFonte) {
  return Novo("00")
      .Campo(11, 14, "11222333000181")
      .Campo(25, 33, "INFORMANTE DE TESTE")
      .Campo(58, 2, tipoFonte)
      .Campo(60, 6, "000001")
      .Campo(66, 8, "20240115")
      .Campo(74, 10, "2.0");
}

Registro& ArquivoNotas::TR01() {
  return Novo("01");
}

Registro& ArquivoNotas::TR98() {
  std::map<std::string_view, int> contagem;
  for (auto it = registros_.rbegin(); it != registros_.rend() && TipoDe(*it) != "01"; ++it) {
    ++contagem[TipoDe(*it)];
  }
  Registro& registro = Novo("98");
  for (std::size_t i = 0; i < std::size(kTiposContados); ++i) {
    registro.Numero(kColunasTR98[i], 6, contagem[kTiposContados[i]]);
  }
  return registro;
}

Registro& ArquivoNotas::TR99() {
  std::map<std::string_view, int> contagem;
  for (const Registro& r : registros_)
    ++contagem[TipoDe(r)];
  const std::string identificacao = registros_.front().Texto().substr(10, 73);
  Registro& registro = Novo("99");
  registro.Campo(11, 73, identificacao);
  for (std::size_t i = 0; i < std::size(kTiposContados); ++i) {
    registro.Numero(kColunasTR99[i], 8, contagem[kTiposContados[i]]);
  }
  return registro;
}

std::vector<std::string> ArquivoNotas::Linhas() const {
  std::vector<std::string> linhas;
  for (const Registro& registro : registros_)
    linhas.push_back(registro.Texto());
  return linhas;
}

std::string ArquivoNotas::Grava(const DiretorioTemporario& diretorio, std::string_view nome) const {
  const std::string caminho = diretorio.Arquivo(nome);
  GravaBytes(caminho, JuntaLinhas(Linhas()));
  return caminho;
}

}  // namespace quorv::teste
