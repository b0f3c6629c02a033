#include "App/BillingDesk.h"
#include "CommandLine/Arguments.h"
#include "CommandLine/CommandTree.h"
#include "Store/ActivityDataRecords.h"

namespace stintbook {

void addBillingCommands(CommandTree& tree)
{
    auto noun = tree.noun("billing", "Currency and rounding of the whole ledger");

    auto show = noun.verb("show", "What is set");
    show.runs([](Session& session) {
        const auto settings = orRefuse(BillingDesk(session.store()).settings());
        if (session.isJSON()) {
            std::string text;
            {
                JsonWriter json(text);
                write(json, settings);
            }
            session.output() << text << '\n';
            return;
        }
        session.output() << "Currency: " << (settings.currency ? settings.currency->code() : "not set")
                         << '\n'
                         << "Rounding: " << label(settings.defaultRounding.value_or(RoundingPolicy::exact))
                         << '\n';
    });

    auto currency = noun.verb("currency", "Set the currency");
    const auto& code = currency.argument("CODE|none", "An ISO 4217 code, as EUR");
    currency.runs(
        [&](Session& session) { orRefuse(BillingDesk(session.store()).setCurrency(unlessNone(code))); });

    auto rounding = noun.verb("rounding", "Set how time is rounded where neither client nor project says so");
    const auto& policy = rounding.argument("POLICY|none", "The policy", roundingChoices());
    rounding.runs([&](Session& session) {
        orRefuse(BillingDesk(session.store()).setRounding(roundingArgument(policy)));
    });
}

} // namespace stintbook
