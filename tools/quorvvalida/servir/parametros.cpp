#include "parametros.hpp"

#include <algorithm>

#include "http.hpp"
#include "valores.hpp"

namespace quorv::servico {

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
    // Texts go to the library as the tool's arguments do: UTF-8, and what is not UTF-8 becomes
    // "?" in the files.
    const std::string& valor = it->second;
    // The values follow the rules of the tool's options of the same names.
    if (nome == "chave_remessa" || nome == "chave_processamento") {
      const std::optional<double> chave = ferramenta::LeChave(valor);
      if (!chave) return nome + ": " + ferramenta::ChaveInvalida(ParaRegistro(valor));
      (nome == "chave_remessa" ? parametros.chaveRemessa : parametros.chaveProcessamento) = *chave;
    } else if (nome == "origem") {
      parametros.origem = valor;
    } else if (nome == "servidor") {
      parametros.servidor = valor;
    } else if (nome == "separador") {
      if (!ferramenta::SeparadorValido(valor)) {
        return nome + ": " + ferramenta::SeparadorInvalido();
      }
      parametros.separador = valor;
    } else if (nome == "programa_chamador") {
      parametros.programaChamador = valor;
    } else if (nome == "tipo_arquivo") {
      parametros.tipoArquivo = valor;
    } else if (nome == "hoje") {
      parametros.hoje = ferramenta::LeData(valor);
      if (!parametros.hoje) return nome + ": " + ferramenta::DataInvalida(ParaRegistro(valor));
    }
  }
  return std::nullopt;
}

}  // namespace quorv::servico
