#include "advertencias_arquivo.hpp"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string_view>

#include "component/shared/cp1252.hpp"
#include "quorvvalida/cls_quorv_msg.hpp"
#include "quorvvalida/cls_quorv_msg_fichas.hpp"

namespace quorv::ferramenta {
namespace {

// Bytes read from a warnings file at a time.
constexpr std::size_t kBloco = std::size_t{64} * 1024;

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
                             const std::function<bool(const Advertencia&)>& cada) {
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
    if (!cada(advertencia)) break;
  }
  return total;
}

ExameAdvertencias ExaminaAdvertencias(const std::string& caminho) {
  ExameAdvertencias exame;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> arquivo(
      std::fopen(std::filesystem::u8path(caminho).c_str(), "rb"), &std::fclose);
  if (!arquivo) return exame;
  exame.legivel = true;
  exame.valido = true;
  std::unique_ptr<char[]> bloco(new char[kBloco]);
  // The line being read: its field, the length of its current field, whether its code is a
  // number, the length of its warned line (kSemRegistro before its fourth "#"), and a CR that
  // may belong to its end.
  constexpr std::uint64_t kSemRegistro = UINT64_MAX;
  std::size_t campo = 0;
  std::uint64_t comprimento = 0;
  bool codigoNumerico = true;
  std::uint64_t registro = kSemRegistro;
  bool cr = false;
  bool vazia = true;
  const auto fechaLinha = [&] {
    ++exame.linhas;
    std::optional<Tipo> tipo;
    if (registro == 160) tipo = Tipo::kNotas;
    if (registro == 260 || registro == 0) tipo = Tipo::kFichas;
    bool boa = campo == 4 && codigoNumerico && tipo.has_value();
    if (boa && registro != 0) {
      if (exame.tipo && *exame.tipo != *tipo) {
        boa = false;
      } else {
        exame.tipo = tipo;
      }
    }
    if (!boa) {
      exame.valido = false;
      exame.linhaRuim = exame.linhas;
    }
    campo = 0;
    comprimento = 0;
    codigoNumerico = true;
    registro = kSemRegistro;
    cr = false;
    vazia = true;
  };
  for (;;) {
    const std::size_t lidos = std::fread(bloco.get(), 1, kBloco, arquivo.get());
    if (lidos == 0) break;
    for (std::size_t i = 0; i < lidos && exame.valido; ++i) {
      const char c = bloco[i];
      if (c == '\n') {
        fechaLinha();
        continue;
      }
      vazia = false;
      if (cr) {
        // A CR inside a field is a byte of it.
        ++comprimento;
        cr = false;
      }
      if (c == '\r') {
        cr = true;
        continue;
      }
      if (c == '#') {
        if (campo == 0 && comprimento == 0) codigoNumerico = false;
        if (campo == 3) registro = comprimento;
        ++campo;
        comprimento = 0;
        continue;
      }
      if (campo == 0 && (c < '0' || c > '9')) codigoNumerico = false;
      ++comprimento;
    }
    if (!exame.valido) break;
  }
  if (!vazia) fechaLinha();
  // A warning of a form run against a TR 110 never read has an empty warned line; a file of
  // such lines alone tells no kind, and is a form file.
  if (exame.valido && !exame.tipo && exame.linhas > 0) exame.tipo = Tipo::kFichas;
  return exame;
}

std::uint64_t ContaLinhas(const std::string& caminho) {
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> arquivo(
      std::fopen(std::filesystem::u8path(caminho).c_str(), "rb"), &std::fclose);
  if (!arquivo) return 0;
  std::unique_ptr<char[]> bloco(new char[kBloco]);
  std::uint64_t linhas = 0;
  char ultimo = '\n';
  for (;;) {
    const std::size_t lidos = std::fread(bloco.get(), 1, kBloco, arquivo.get());
    if (lidos == 0) break;
    linhas += static_cast<std::uint64_t>(std::count(bloco.get(), bloco.get() + lidos, '\n'));
    ultimo = bloco[lidos - 1];
  }
  return linhas + (ultimo != '\n' ? 1 : 0);
}

}  // namespace quorv::ferramenta
