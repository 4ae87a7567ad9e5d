#pragma once

#include <memory>
#include <vector>

#include "VarnholtLib/Numerics/Calc/vrnCalcItems.h"

/// The expression evaluator: arithmetic on numbers, on keywords whose values the application supplies, and on
/// functions, in 80-bit floats.
///
///     TCalc calc;
///     double rain = 12.5;
///     calc.RegisterKeyword(u"rain", &rain, [](TCalc&, const String&, void* param) {
///         return Extended(*static_cast<double*>(param));
///     });
///     calc.Set_Exp(u"2 * ($rain + 1.5)");
///     Extended value = calc.Calculate();  // 28; each further call takes the current rain
///
/// Grammar:
///
///     expression   operand { operator operand }
///     operator     "+" | "-" | "*" | "/" | "^"
///     operand      number | "$" name | "(" expression ")" | "@" name "(" [ parameter { separator parameter } ] ")"
///     separator    one blank or one comma
///     number       what StrToFloat takes, with an optional "-" or "n" before it: 12, -0.5, n2.5, 1.5e3
///
/// "^" binds strongest, then "*" and "/", then "+" and "-"; operators of one level associate to the left, "^"
/// included: 2 ^ 3 ^ 2 is 64. A minus belongs to the number that follows it unless an operand precedes it, so
/// -2 ^ 2 is 4. A signed exponent such as 1e-5 is split at its minus and refused. A parameter that contains
/// an operator needs brackets of its own: @sum((1+2),3). The ")" of a group or a function call is followed by
/// the end of the text, a blank, a tab or a line end; anything else is a syntax error.
///
/// Functions of every evaluator:
///
///     @sum(a,b,...)     2 or more    their sum
///     @min(a,b,...)     2 or more    the smallest
///     @max(a,b,...)     2 or more    the largest
///     @avg(a,b,...)     2 or more    their mean
///     @median(a,b,c,..) 3 or more    the middle value, or the mean of the two middle ones, in 32-bit floats
///     @StDev(a,b,...)   2 or more    the sample standard deviation; it calculates each parameter twice
///     @sqrt(a)          1            the square root; NaN for a negative value
///
/// How a calculation runs. Parse cuts the expression into items and prepares steps from them. Calculate
/// runs the steps and allocates nothing; it prepares them again only if something has been parsed in the
/// expression, or registered there or in a parent, since. Keywords and functions are called back in this
/// order: first every "^" from left to right, then every "*" and "/", then every "+" and "-"; each calculates
/// its left operand, then its right one, unless that was reduced before. Steps on constants only are done
/// once.
///
/// Callbacks may register, parse and calculate, also on the evaluator that calls them; vrnCalcItems.h says
/// when a group or a parameter that they parse takes effect. They must not delete an evaluator that is being
/// calculated, nor one that contains it or is its parent.
///
/// Limits: groups and built-in functions nest without bound. Calls of functions that calculate their
/// parameters through callbacks (own ones and @StDev) nest to a depth of kMaxCallDepth.
/// That depth takes 54 to 350 KiB of stack in a release build and 200 to 630 KiB in a debug build (x86-64, g++ 12; the most
/// if each parameter keeps values for later steps), and whatever the callbacks use; give a thread with a small stack that
/// much. Benchmarks/CalcBenchmark measures the least.
/// A @StDev in a @StDev calls the keywords inside it four times, and so on: the work doubles with each level.
///
/// Failures: if allocation fails (std::bad_alloc), the evaluator stays as it was; only Parse and Set_Exp may
/// already have released the former items, as after any failed Parse. Freeing never allocates.
///
/// Threads: an evaluator, its parents and all evaluators below it serve one thread at a time. Evaluators
/// without a common parent are independent; with a common parent they are, as long as nothing is registered
/// on it meanwhile.
namespace Varnholt {

class TCalcProgram;
class TCalcTree;
struct TCalcRegistrations;

class VARNHOLT_EXPORT TCalc final : public TCalcObj {
public:
    /// How deep calculations nest on one evaluator and those of its expression.
    static constexpr int kMaxCallDepth = 500;

    TCalc();
    /// An evaluator that also finds the keywords and functions of its parent, which must outlive it.
    explicit TCalc(TCalc* parent);
    /// Parsed at once. Raises what Parse raises.
    explicit TCalc(StringView expression);
    TCalc(TCalc* parent, StringView expression);
    ~TCalc() override;

    /// Stores the text and parses it.
    void Set_Exp(StringView expression);
    /// The expression: after Parse, the cleaned text.
    [[nodiscard]] String Get_Exp() const { return String(FExp.View()); }

    /// Cleans the text, cuts it into items and prepares the calculation. The former items are released first.
    ///
    /// Raises ceSyntax for an empty expression, an empty group or parameter, a malformed call, and text
    /// directly after a closing bracket; ceBracket for a group that is not closed; ceOperator with the token
    /// where an operator was expected; ceFunction for an unknown function; ceParam for a wrong number of
    /// parameters; EConvertError for an operand that is no number; Exception "The expression is too long" for
    /// 2^32 - 1 characters and more, which leaves the evaluator as it was. After any other failure the list
    /// holds the items before it.
    void Parse();

    /// The value. Raises ceSyntax without items, ceKeyword with the name for a keyword that is not
    /// registered, ceDivideByZero for a divisor equal to 0, EListError for an expression that ends in an
    /// operator, Exception "Function calls are nested too deeply" beyond kMaxCallDepth, and whatever a
    /// callback raises. The evaluator stays as it was in these cases too.
    [[nodiscard]] Extended Calculate();

    /// Number of items: operands at 0, 2, 4 and so on, operators between them.
    [[nodiscard]] int Get_Count() const noexcept { return static_cast<int>(FItems.size()); }
    /// The item at a 0-based index. Raises EListError for an index outside the list.
    [[nodiscard]] TCalcObj& GetItems(int index) const;

    /// Adds a function. Names are case-sensitive and not checked for duplicates: the first one of a name, the
    /// built-in ones before all others, is the one that is found. A bound of -1 is no limit on that side.
    /// An expression that calls the function must be set after it was registered.
    /// Raises EArgumentNilException for an empty callback.
    void RegisterFunction(StringView name, int minParams, int maxParams, TFunctionEvent event);
    /// Adds a keyword under its name without the dollar sign; names as for functions. The pointer is passed to the
    /// callback as it is, and what it points to must live as long as it is used. Keywords may be registered at any
    /// time. Raises EArgumentNilException for an empty callback.
    void RegisterKeyword(StringView name, void* param, TKeywordEvent event);
    void RegisterKeyword(StringView name, TKeywordEvent event);
    /// Adds a keyword whose value is read at an address, where a keyword would be called back; what is there must live as
    /// long as it is used. It is found, listed and hidden as other keywords, and its parameter is the address. If a callback
    /// changes it or registers another keyword of its name, the calculation under way reads the former value or the new one.
    /// An expression whose keywords are all variables of type double calculates about twice as fast as with callbacks. Raises
    /// EArgumentNilException "A variable needs an address: " with the name for a null pointer.
    void RegisterVariable(StringView name, const double* variable);
    void RegisterVariable(StringView name, const float* variable);
    void RegisterVariable(StringView name, const Extended* variable);

    /// The first function or keyword of that name here, else in the parent and further up, or none.
    [[nodiscard]] const TFunction* FindFunction(StringView name) const;
    [[nodiscard]] TKeyword* FindKeyword(StringView name) const;

    /// This evaluator's own functions, the built-in ones first, by 0-based index. Raises EListError for an
    /// index outside the list.
    [[nodiscard]] int Get_FunctionCount() const noexcept;
    [[nodiscard]] const TFunction& Get_Function(int index) const;
    /// This evaluator's own keywords, by 0-based index. Raises EListError for an index outside the list.
    [[nodiscard]] int Get_KeywordCount() const noexcept;
    [[nodiscard]] TKeyword& Get_Keyword(int index) const;

    /// Appends the keywords that the expression uses, in the order of the text, groups and parameters
    /// included; with walkParent also those of the parents' expressions.
    ///
    /// The walk of one list of items (the expression's, a group's, a parameter's) ends at the first keyword
    /// that is left out: one without a parameter pointer if includeWithoutParam is false, one already in the
    /// list if allowDuplicates is false. Raises ceKeyword without a name for a keyword that is not
    /// registered; the keywords before it stay in the list.
    void GetKeywordsUsed(std::vector<TKeyword*>& list, bool includeWithoutParam, bool allowDuplicates,
                         bool walkParent = true) const;

    // --- Cleaning ---
    // The passes, each on the current text. Parse runs CleanupExp, which runs them all.

    /// Trims the text, then drops each blank that is followed by a blank.
    void CleanupClumpedSpaces();
    /// Drops the blanks inside brackets next to them, by the two passes below.
    void CleanupSpacesAroundBrackets();
    void CleanupSpacesAfterOpeningBrackets();
    void CleanupSpacesBeforeClosingBrackets();
    /// Puts a blank on each side of every operator, then runs CleanupRemoveSpaceAfterNegativeModifier.
    void CleanupMakeSureOneSpaceAroundChars();
    void CleanupMakeSureOneSpaceAround(Char character);
    /// Drops the blank after each minus that is a sign.
    void CleanupRemoveSpaceAfterNegativeModifier();
    /// Whether an operand (a digit, a letter or ")") ends before a 1-based position; blanks are skipped.
    [[nodiscard]] bool CleanupIsLastItemADigit(int position) const;
    void CleanupExp();

    // --- The callbacks of the built-in functions ---

    static Extended FuncSum(const TFunction& function, const TFunctionParams& params);
    static Extended FuncMin(const TFunction& function, const TFunctionParams& params);
    static Extended FuncMax(const TFunction& function, const TFunctionParams& params);
    static Extended FuncAvg(const TFunction& function, const TFunctionParams& params);
    /// Raises ceOperator with "Not enough variables for calculation." for fewer than 3 parameters.
    static Extended FuncMedian(const TFunction& function, const TFunctionParams& params);
    static Extended FuncStDev(const TFunction& function, const TFunctionParams& params);
    static Extended FuncSqrt(const TFunction& function, const TFunctionParams& params);

    // --- For the module itself ---

    /// The evaluator of a group or a parameter.
    TCalc(TCalcOwnerKey, TCalc& owner, TCalcText text) noexcept;
    [[nodiscard]] TCalcTree& GetTree() const noexcept { return *FTree; }

private:
    friend class TCalcParser;
    friend class TCalcScopes;
    friend class TCalcTree;

    using TItemList = std::vector<std::unique_ptr<TCalcObj>>;

    TCalc* NextToEmpty() noexcept override;
    static void FreeItems(TItemList& items) noexcept;
    void ParseText(String text);
    template <typename TPass>
    void CleanText(TPass pass);
    template <typename TAdd>
    void Register(TAdd add);
    template <typename T>
    void RegisterReader(StringView name, const T* variable);
    void AddKeyword(std::unique_ptr<TKeyword> keyword);
    [[nodiscard]] const TCalc* NextInChain() const noexcept;
    [[nodiscard]] Extended CalculateAnew();
    void PreparePrograms();

    bool FIsInner = false;  // of a group or a parameter
    bool FPure = true;      // no keyword and no application's function anywhere inside
    TCalcText FExp;
    TItemList FItems;
    std::unique_ptr<TCalcRegistrations> FRegistered;  // none until something is registered here
    std::unique_ptr<TCalcProgram> FProgram;           // none until prepared
    TCalcTree* FTree;                                 // owned by the top evaluator
};

}  // namespace Varnholt
