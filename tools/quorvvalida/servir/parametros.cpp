#include "parametros.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "http.hpp"
#include "quorvvalida/geral.hpp"

namespace quorv::servico {
namespace {

std::optional<double> Numero(const std::string& texto) {
  double valor = 0;
  const auto [fim, erro] = std::from_chars(texto.data(), texto.data() + texto.size(), valor);
  if (texto.empty() || erro != std::errc() || fim != texto.data() + texto.size() ||
      !std::isfinite(valor)) {
    return std::nullopt;
  }
  return valor;
}

}  // namespace

std::optional<std::string> LeParametros(const std::multimap<std::string, std::string>& consulta,
                                        Destino destino, Parametros& parametros) {
  const std::vector<std::string>& aceitos = ParametrosDe(destino);
  for (auto it = consulta.begin(); it != consulta.end(); it = consulta.upper_bound(it->first)) {
    const std::string& nome = it->first;
    if (std::find(aceitos.begin(), aceitos.end(), nome) == aceitos.end()) {
      return aceitos.empty() ? "esta rota não aceita parâmetros: " + ParaRegistro(nome)
                             : "parâmetro desconhecido: " + ParaRegistro(nome);
    }
    if (consulta.count(nome) > 1) return "o parâmetro " + nome + " foi dado mais de uma vez";
    const std::string& valor = it->second;
    if (!Utf8Valido(valor)) return "o parâmetro " + nome + " não está em UTF-8";
    if (nome == "chave_remessa" || nome == "chave_processamento") {
      const std::optional<double> numero = Numero(valor);
      if (!numero) return "valor inválido para " + nome + ": " + ParaRegistro(valor);
      (nome == "chave_remessa" ? parametros.chaveRemessa : parametros.chaveProcessamento) = *numero;
    } else if (nome == "origem") {
      parametros.origem = valor;
    } else if (nome == "servidor") {
      parametros.servidor = valor;
    } else if (nome == "separador") {
      if (valor.empty()) return "o separador não pode ser vazio";
      parametros.separador = valor;
    } else if (nome == "programa_chamador") {
      parametros.programaChamador = valor;
    } else if (nome == "tipo_arquivo") {
      parametros.tipoArquivo = valor;
    } else if (nome == "hoje") {
      const double data = ConverteData(valor);
      if (valor.size() != 8 || data <= 0) return "data inválida em hoje: " + ParaRegistro(valor);
      parametros.hoje = data;
    }
  }
  return std::nullopt;
}

}  // namespace quorv::servico
