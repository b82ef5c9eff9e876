#include "advertencias_arquivo.hpp"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "component/shared/cp1252.hpp"
#include "quorvvalida/cls_quorv_msg.hpp"
#include "quorvvalida/cls_quorv_msg_fichas.hpp"

namespace quorv::ferramenta {
namespace {

template <typename T>
std::optional<T> Inteiro(std::string_view texto) {
  T valor{};
  const auto [fim, erro] = std::from_chars(texto.data(), texto.data() + texto.size(), valor);
  if (erro != std::errc() || fim != texto.data() + texto.size() || texto.empty()) {
    return std::nullopt;
  }
  return valor;
}

std::string Mensagem(Tipo tipo, int codigo) {
  if (codigo < INT16_MIN || codigo > INT16_MAX) return {};
  const auto curto = static_cast<int16_t>(codigo);
  return tipo == Tipo::kNotas ? clsQuorvMsg().MensagemAdvertencia(curto)
                              : clsQuorvMsgFichas().MensagemAdvertenciaFichas(curto);
}

}  // namespace

std::uint64_t LeAdvertencias(const std::string& caminho, const std::string& separador, Tipo tipo,
                             const std::function<void(const Advertencia&)>& cada) {
  std::ifstream entrada(std::filesystem::u8path(caminho), std::ios::binary);
  const std::string sep = cp1252::DeUtf8(separador);
  const std::size_t larguraTR = tipo == Tipo::kNotas ? 2 : 3;
  std::uint64_t total = 0;
  std::string linha;
  Advertencia advertencia;
  while (std::getline(entrada, linha)) {
    if (!linha.empty() && linha.back() == '\r') linha.pop_back();
    ++total;
    // code, key, key, the warned line, line number: the warned line may hold the separator,
    // so it is taken between the third separator and the last one.
    const std::size_t primeiro = linha.find(sep);
    const std::size_t segundo =
        primeiro == std::string::npos ? primeiro : linha.find(sep, primeiro + sep.size());
    const std::size_t terceiro =
        segundo == std::string::npos ? segundo : linha.find(sep, segundo + sep.size());
    const std::size_t ultimo = linha.rfind(sep);
    advertencia.codigo = cp1252::ParaUtf8(linha.substr(0, primeiro));
    advertencia.codigoNumero = Inteiro<int>(advertencia.codigo);
    if (terceiro != std::string::npos && ultimo > terceiro) {
      const std::string_view registro =
          std::string_view(linha).substr(terceiro + sep.size(), ultimo - terceiro - sep.size());
      advertencia.tr =
          cp1252::ParaUtf8(registro.substr(std::min<std::size_t>(8, registro.size()), larguraTR));
      advertencia.linha = cp1252::ParaUtf8(std::string_view(linha).substr(ultimo + sep.size()));
    } else {
      advertencia.tr.clear();
      advertencia.linha.clear();
    }
    advertencia.linhaNumero = Inteiro<long long>(advertencia.linha);
    advertencia.mensagem =
        advertencia.codigoNumero ? Mensagem(tipo, *advertencia.codigoNumero) : std::string();
    cada(advertencia);
  }
  return total;
}

}  // namespace quorv::ferramenta
