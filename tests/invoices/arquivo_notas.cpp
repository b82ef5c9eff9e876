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

Registro& Preenche(Registro& registro, const std::vector<Preenchimento>& campos) {
  for (const Preenchimento& campo : campos)
    registro.Campo(campo.coluna, campo.largura, campo.valor);
  return registro;
}

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

Registro& ArquivoNotas::TR10Valido() {
  return Novo("10")
      .Campo(11, 10, kEmitenteValido)      // issuer
      .Campo(21, 1, "1")                   // note type
      .Campo(22, 3, "001")                 // series
      .Campo(25, 6, "000123")              // note number
      .Campo(31, 1, "S")                   // movement type
      .Campo(32, 8, kEmissaoValida)        // issue date
      .Campo(40, 14, kDestinatarioValido)  // counterpart
      .Campo(54, 14, kCNPJValido)          // counterpart's CNPJ
      .Campo(68, 3, "311")                 // country
      .Campo(71, 2, "QZ")                  // UF
      .Campo(73, 1, "1")                   // situation
      .Campo(74, 4, "5101")                // operation code
      .Campo(78, 13, "0000000010000")      // ICMS calculation base
      .Campo(91, 13, "0000000001200")      // ICMS value
      .Campo(104, 13, "0000000010000")     // goods
      .Campo(117, 13, "0000000000000")     // Funrural
      .Campo(130, 13, "0000000010000")     // note total
      .Campo(143, 1, " ");                 // income flag
}

Registro& ArquivoNotas::TR20Valido() {
  return Novo("20")
      .Campo(11, 1, "2")                   // document type
      .Campo(12, 14, kDestinatarioValido)  // issuer: the note's counterpart
      .Campo(26, 2, "QZ")                  // issuer's UF
      .Campo(28, 1, "1")                   // note type
      .Campo(29, 3, "001")                 // series
      .Campo(32, 6, "000456")              // document number
      .Campo(38, 8, kEmissaoValida)        // document date
      .Campo(46, 14, kCNPJValido)          // counterpart's CNPJ
      .Campo(60, 14, kDestinatarioValido)  // counterpart
      .Campo(74, 2, "QZ")                  // counterpart's UF
      .Campo(76, 13, "0000000010000")      // ICMS calculation base
      .Campo(89, 13, "0000000001200")      // ICMS value
      .Campo(102, 13, "0000000010000")     // goods
      .Campo(115, 13, "0000000000000")     // Funrural
      .Campo(128, 13, "0000000010000")     // document total
      .Campo(141, 1, " ")                  // income flag
      .Campo(142, 3, "510");               // CFOP
}

Registro& ArquivoNotas::TR40Valido() {
  return Novo("40")
      .Campo(11, 10, "0000000001")             // assessment number
      .Campo(21, 8, "20240201")                // drawn up
      .Campo(29, 8, "20240205")                // acknowledged
      .Campo(37, 10, kDestinatarioValido)      // taxpayer's registration
      .Campo(47, 11, "")                       // taxpayer's CPF
      .Campo(58, 14, kCNPJValido)              // taxpayer's CNPJ
      .Campo(72, 46, "CONTRIBUINTE DE TESTE")  // taxpayer's name
      .Campo(118, 13, "0000000050000");        // total value
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
