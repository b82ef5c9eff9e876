#include "http.hpp"

#include <charconv>
#include <vector>

#include <fmt/core.h>

namespace quorv::servico {
namespace {

std::string_view Apara(std::string_view texto) {
  const auto inicio = texto.find_first_not_of(" \t");
  if (inicio == std::string_view::npos) return {};
  const auto fim = texto.find_last_not_of(" \t");
  return texto.substr(inicio, fim - inicio + 1);
}

bool IguaisSemCaixa(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const auto minuscula = [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; };
    if (minuscula(a[i]) != minuscula(b[i])) return false;
  }
  return true;
}

// The weight a media range of an Accept header gives a media type: by the most specific range
// that matches (exact, then type/*, then */*); -1 when none does.
struct Faixa {
  std::string_view tipo;
  std::string_view subtipo;
  double peso = 1;
};

std::vector<Faixa> Faixas(std::string_view accept) {
  std::vector<Faixa> faixas;
  while (!accept.empty()) {
    const auto virgula = accept.find(',');
    std::string_view item = accept.substr(0, virgula);
    accept = virgula == std::string_view::npos ? std::string_view() : accept.substr(virgula + 1);
    Faixa faixa;
    const auto pontoEVirgula = item.find(';');
    const std::string_view midia = Apara(item.substr(0, pontoEVirgula));
    const auto barra = midia.find('/');
    if (midia.empty() || barra == std::string_view::npos) continue;
    faixa.tipo = midia.substr(0, barra);
    faixa.subtipo = midia.substr(barra + 1);
    std::string_view parametros =
        pontoEVirgula == std::string_view::npos ? std::string_view() : item.substr(pontoEVirgula);
    while (!parametros.empty()) {
      parametros.remove_prefix(1);
      const auto proximo = parametros.find(';');
      const std::string_view parametro = Apara(parametros.substr(0, proximo));
      parametros =
          proximo == std::string_view::npos ? std::string_view() : parametros.substr(proximo);
      if (parametro.size() > 2 && (parametro[0] == 'q' || parametro[0] == 'Q') &&
          parametro[1] == '=') {
        double peso = 0;
        const std::string_view valor = parametro.substr(2);
        const auto [fim, erro] = std::from_chars(valor.data(), valor.data() + valor.size(), peso);
        faixa.peso = erro == std::errc() && fim == valor.data() + valor.size() ? peso : 0;
      }
    }
    faixas.push_back(faixa);
  }
  return faixas;
}

double Peso(const std::vector<Faixa>& faixas, std::string_view tipo, std::string_view subtipo) {
  int melhor = -1;
  double peso = -1;
  for (const Faixa& faixa : faixas) {
    int especificidade = -1;
    if (IguaisSemCaixa(faixa.tipo, tipo) && IguaisSemCaixa(faixa.subtipo, subtipo)) {
      especificidade = 2;
    } else if (IguaisSemCaixa(faixa.tipo, tipo) && faixa.subtipo == "*") {
      especificidade = 1;
    } else if (faixa.tipo == "*" && faixa.subtipo == "*") {
      especificidade = 0;
    }
    if (especificidade > melhor) {
      melhor = especificidade;
      peso = faixa.peso;
    }
  }
  return peso;
}

}  // namespace

std::optional<Formato> NegociaFormato(const std::string& accept) {
  if (Apara(accept).empty()) return Formato::kJson;
  const std::vector<Faixa> faixas = Faixas(accept);
  const double json = Peso(faixas, "application", "json");
  const double texto = Peso(faixas, "text", "plain");
  if (json <= 0 && texto <= 0) return std::nullopt;
  return texto > json ? Formato::kTexto : Formato::kJson;
}

std::optional<std::uint64_t> LeComprimento(const std::string& texto) {
  std::uint64_t valor = 0;
  const auto [fim, erro] = std::from_chars(texto.data(), texto.data() + texto.size(), valor);
  if (texto.empty() || erro != std::errc() || fim != texto.data() + texto.size()) {
    return std::nullopt;
  }
  return valor;
}

bool TemSegmentoPai(std::string_view caminho) {
  std::size_t inicio = 0;
  while (inicio <= caminho.size()) {
    const auto barra = caminho.find('/', inicio);
    const std::string_view segmento = caminho.substr(
        inicio, barra == std::string_view::npos ? std::string_view::npos : barra - inicio);
    if (segmento == "..") return true;
    if (barra == std::string_view::npos) break;
    inicio = barra + 1;
  }
  return false;
}

std::string ParaCabecalho(std::string_view texto) {
  std::string resultado;
  for (const char c : texto) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte > 0x7e || c == '%' || c == '"') {
      resultado += fmt::format("%{:02X}", byte);
    } else {
      resultado += c;
    }
  }
  return resultado;
}

bool IdentificadorAceitavel(std::string_view id) {
  if (id.empty() || id.size() > 128) return false;
  for (const char c : id) {
    const bool aceito = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                        (c >= '0' && c <= '9') || c == '.' || c == '_' || c == ':' || c == '-';
    if (!aceito) return false;
  }
  return true;
}

std::string ParaRegistro(std::string_view caminho) {
  const std::string escapado = ParaCabecalho(caminho.substr(0, 200));
  return caminho.size() > 200 ? escapado + "..." : escapado;
}

}  // namespace quorv::servico
