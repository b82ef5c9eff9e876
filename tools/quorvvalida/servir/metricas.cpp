#include "metricas.hpp"

#include <fmt/format.h>

namespace quorv::servico {
namespace {

// A label value as the text format wants it: backslash, double quote and line feed escaped.
std::string Rotulo(const std::string& valor) {
  std::string escapado;
  for (const char c : valor) {
    if (c == '\\' || c == '"') {
      escapado += '\\';
      escapado += c;
    } else if (c == '\n') {
      escapado += "\\n";
    } else {
      escapado += c;
    }
  }
  return escapado;
}

void Cabeca(std::string& texto, const char* nome, const char* tipo, const char* ajuda) {
  texto += fmt::format("# HELP {} {}\n# TYPE {} {}\n", nome, ajuda, nome, tipo);
}

}  // namespace

void Metricas::Requisicao(const std::string& rota, const std::string& metodo, int status,
                          double segundos) {
  std::lock_guard<std::mutex> trava(trava_);
  ++requisicoes_[{rota, metodo, status}];
  Histograma& histograma = duracoes_[rota];
  for (std::size_t i = 0; i < kLimites.size(); ++i) {
    if (segundos <= kLimites[i]) ++histograma.baldes[i];
  }
  ++histograma.total;
  histograma.soma += segundos;
}

void Metricas::Validacao(const std::string& tipo, std::uint64_t bytes, std::uint64_t linhas,
                         std::int64_t advertencias) {
  std::lock_guard<std::mutex> trava(trava_);
  PorTipo& contagem = tipos_[tipo];
  ++contagem.arquivos;
  contagem.bytes += bytes;
  contagem.linhas += linhas;
  if (advertencias > 0) contagem.advertencias += static_cast<std::uint64_t>(advertencias);
}

std::string Metricas::Texto(const Admissao::Estado& admissao) const {
  std::lock_guard<std::mutex> trava(trava_);
  std::string texto;
  Cabeca(texto, "quorvvalida_requisicoes_total", "counter",
         "Requisições atendidas, por rota, método e status HTTP.");
  for (const auto& [chave, quantas] : requisicoes_) {
    const auto& [rota, metodo, status] = chave;
    texto +=
        fmt::format("quorvvalida_requisicoes_total{{rota=\"{}\",metodo=\"{}\",status=\"{}\"}} {}\n",
                    Rotulo(rota), Rotulo(metodo), status, quantas);
  }
  Cabeca(texto, "quorvvalida_duracao_requisicoes_segundos", "histogram",
         "Tempo de cada requisição, do cabeçalho ao último byte da resposta.");
  for (const auto& [rota, histograma] : duracoes_) {
    const std::string r = Rotulo(rota);
    for (std::size_t i = 0; i < kLimites.size(); ++i) {
      texto += fmt::format(
          "quorvvalida_duracao_requisicoes_segundos_bucket{{rota=\"{}\",le=\"{}\"}} {}\n", r,
          kLimites[i], histograma.baldes[i]);
    }
    texto += fmt::format(
        "quorvvalida_duracao_requisicoes_segundos_bucket{{rota=\"{}\",le=\"+Inf\"}} {}\n", r,
        histograma.total);
    texto += fmt::format("quorvvalida_duracao_requisicoes_segundos_sum{{rota=\"{}\"}} {}\n", r,
                         histograma.soma);
    texto += fmt::format("quorvvalida_duracao_requisicoes_segundos_count{{rota=\"{}\"}} {}\n", r,
                         histograma.total);
  }
  struct Contador {
    const char* nome;
    const char* ajuda;
    std::uint64_t PorTipo::*campo;
  };
  for (const Contador& contador :
       {Contador{"quorvvalida_arquivos_validados_total", "Arquivos validados, por tipo.",
                 &PorTipo::arquivos},
        Contador{"quorvvalida_bytes_validados_total", "Bytes dos arquivos validados, por tipo.",
                 &PorTipo::bytes},
        Contador{"quorvvalida_linhas_validadas_total", "Linhas dos arquivos validados, por tipo.",
                 &PorTipo::linhas},
        Contador{"quorvvalida_advertencias_total",
                 "Advertências encontradas pelas rotas de validação (/v1/notas, /v1/fichas, "
                 "/v1/auto), por tipo.",
                 &PorTipo::advertencias}}) {
    Cabeca(texto, contador.nome, "counter", contador.ajuda);
    for (const char* tipo : {"notas", "fichas"}) {
      const auto encontrado = tipos_.find(tipo);
      texto += fmt::format("{}{{tipo=\"{}\"}} {}\n", contador.nome, tipo,
                           encontrado == tipos_.end() ? 0 : encontrado->second.*contador.campo);
    }
  }
  struct Medida {
    const char* nome;
    const char* ajuda;
    std::size_t valor;
  };
  for (const Medida& medida :
       {Medida{"quorvvalida_validacoes_em_andamento", "Validações em andamento agora.",
               admissao.validando},
        Medida{"quorvvalida_validacoes_aguardando",
               "Requisições com o arquivo recebido, à espera de um trabalhador.",
               admissao.aguardando},
        Medida{"quorvvalida_requisicoes_admitidas",
               "Requisições de validação admitidas: recebendo o arquivo, à espera ou validando.",
               admissao.admitidas},
        Medida{"quorvvalida_trabalhadores", "Validações simultâneas permitidas (--trabalhadores).",
               admissao.trabalhadores},
        Medida{"quorvvalida_fila_capacidade",
               "Requisições admitidas além dos trabalhadores antes do 503 (--fila).",
               admissao.fila}}) {
    Cabeca(texto, medida.nome, "gauge", medida.ajuda);
    texto += fmt::format("{} {}\n", medida.nome, medida.valor);
  }
  return texto;
}

}  // namespace quorv::servico
