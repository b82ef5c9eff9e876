#include "component/files/leitor_advertencias.hpp"

#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <stdexcept>

#include "component/shared/cp1252.hpp"

namespace quorv {
namespace {

// Fields of a warning line, numbered from 0.
constexpr std::size_t kCampoCodigo = 0;
constexpr std::size_t kCampoRegistro = 3;
constexpr std::size_t kCampoLinha = 4;
// Room kept for each field of a line. The items lie at the start of their fields (record type and
// identification within the first 30 characters of the input line), so a line of any length goes
// by in this room; a line number field longer than it is no number the reader could take.
constexpr std::size_t kEspacoCampo = 1024;

// The value rounded half to even, as the run time's conversions to whole numbers round it;
// empty when the result does not fit between the limits (the conversion fails).
template <typename Inteiro>
std::optional<Inteiro> Arredonda(double valor) {
  double inteiro = std::floor(valor);
  const double resto = valor - inteiro;
  if (resto > 0.5 || (resto == 0.5 && std::fmod(inteiro, 2.0) != 0)) inteiro += 1;
  if (!(inteiro >= std::numeric_limits<Inteiro>::min() &&
        inteiro <= std::numeric_limits<Inteiro>::max())) {
    return std::nullopt;
  }
  return static_cast<Inteiro>(inteiro);
}

// Single-byte text padded with blanks or cut to its width, as UTF-8.
void AjustaBytes(std::string& destino, std::string_view bytes, std::size_t largura) {
  std::string ajustado(bytes.substr(0, largura));
  ajustado.resize(largura, ' ');
  destino = cp1252::ParaUtf8(ajustado);
}

}  // namespace

LeitorAdvertencias::LeitorAdvertencias(const FormatoAdvertencias& formato)
    : formato_(formato),
      tr_(static_cast<std::size_t>(formato.tr.largura), ' '),
      nota_(static_cast<std::size_t>(formato.nota.largura), ' '),
      descricao_(kLarguraDescricao, ' ') {
  for (std::string& campo : campos_)
    campo.reserve(kEspacoCampo);
}

void LeitorAdvertencias::Abrir(std::string_view caminhoUtf8) {
  Fechar();
  total_ = 0;
  if (!entrada_.Abrir(caminhoUtf8)) return;
  quorv::Linha linha;
  int32_t total = 0;
  while (entrada_.Proxima(linha))
    ++total;
  total_ = total;
  if (!entrada_.Abrir(caminhoUtf8)) return;
  aberto_ = true;
  lidas_ = 0;
  fim_ = entrada_.Fim();
  if (total_ > 0) Avancar();
}

void LeitorAdvertencias::Fechar() {
  entrada_.Fechar();
  aberto_ = false;
  fim_ = true;
}

void LeitorAdvertencias::Avancar() {
  if (!aberto_) return;
  for (std::size_t i = 0; i < kCampos; ++i) {
    campos_[i].clear();
    cortado_[i] = false;
  }
  quantos_ = 0;
  if (!entrada_.ProximaEmPedacos([this](std::string_view pedaco) { Separa(pedaco); })) {
    fim_ = true;
    return;
  }
  ++lidas_;
  Toma();
  fim_ = entrada_.Fim();
}

int32_t LeitorAdvertencias::Posicao() const {
  if (!aberto_) throw std::runtime_error("nenhum arquivo de advertências aberto");
  return lidas_ + 1;
}

// Splits the line at "#" as its pieces go by. An empty line has no field at all; any other line
// has at least its first.
void LeitorAdvertencias::Separa(std::string_view pedaco) {
  while (!pedaco.empty()) {
    if (quantos_ == 0) quantos_ = 1;
    const std::size_t separador = pedaco.find('#');
    const std::string_view parte = pedaco.substr(0, separador);
    if (quantos_ <= kCampos) {
      std::string& campo = campos_[quantos_ - 1];
      const std::size_t cabe = kEspacoCampo - campo.size();
      campo.append(parte.substr(0, cabe));
      if (parte.size() > cabe) cortado_[quantos_ - 1] = true;
    }
    if (separador == std::string_view::npos) return;
    ++quantos_;
    pedaco.remove_prefix(separador + 1);
  }
}

void LeitorAdvertencias::Toma() {
  if (quantos_ == 0) return;
  // Each item is taken by itself: what the line cannot give keeps its value.
  if (quantos_ > kCampoRegistro) {
    const std::string_view registro = campos_[kCampoRegistro];
    AjustaBytes(tr_, texto::Campo(registro, formato_.tr),
                static_cast<std::size_t>(formato_.tr.largura));
    AjustaBytes(nota_, texto::Campo(registro, formato_.nota),
                static_cast<std::size_t>(formato_.nota.largura));
  }
  if (quantos_ > kCampoLinha && !cortado_[kCampoLinha]) {
    // A line number that is not a number, or too big for 32 bits, does not convert.
    if (const auto numero = texto::Numero(campos_[kCampoLinha])) {
      if (const auto linhaAviso = Arredonda<int32_t>(*numero)) linha_ = *linhaAviso;
    }
  }
  // The code is read as the run time's Val reads it (its leading number, 0 when there is none)
  // and must fit in 16 bits.
  if (const auto codigo = Arredonda<int16_t>(texto::ValorInicial(campos_[kCampoCodigo]))) {
    std::string descricao = cp1252::DeUtf8(formato_.descricao(*codigo));
    descricao.resize(kLarguraDescricao, ' ');
    descricao_ = cp1252::ParaUtf8(descricao);
  }
}

}  // namespace quorv
