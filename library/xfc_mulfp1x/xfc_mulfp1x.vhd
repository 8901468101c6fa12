-- Multiplies two XFloat values in multiplier form (magnitudes from 1 to 2). The product is exact before it is brought
-- into the form of the output: rounded to nearest even as an IEEE single (ieeeoutput), or with its lost bits or'ed into
-- the lowest one in adder form (xoutput, from 1 to 4, or from 1 to 2 with outputscale), normalized in multiplier form
-- (multoutput) or in sign and magnitude (divoutput). inf * 0 is nan; exponent field 0 is zero.
--   step choose:  the rows of the product, for each two bits of bb; sum of the exponents; flags
--   step rows:    sums of four rows
--   step pairs:   sums of two of these
--   step sum:     the product
--   step settle:  internal outputs: shift, exponent, range
--   step round:   IEEE output: rounds the product for either place of its highest one, exponent and fraction in one
--                 carry chain, and chooses
-- Latency 5 cycles with ieeeoutput, 3 + outputscale with xoutput, else 4: a register behind every step but pairs and
-- sum, behind pairs with ieeeoutput, behind sum unless it is xoutput without outputscale.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_mulfp1x is
  generic (mantissa : positive; ieeeoutput : natural; xoutput : natural; multoutput : natural; divoutput : natural;
           outputscale : natural; synthesize : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(mantissa + 10 downto 1);
        aasat, aazip, aanan : in std_logic;
        bb : in std_logic_vector(mantissa + 10 downto 1);
        bbsat, bbzip, bbnan : in std_logic;
        cc : out std_logic_vector(mantissa + 10 - ieeeoutput * (mantissa - 22) downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_mulfp1x;

architecture rtl of xfc_mulfp1x is
  constant exponent_bits : positive := 10;
  constant wide_bits     : positive := exponent_bits + 2;        -- two's complement
  constant bias          : positive := 127;
  constant fraction_bits : positive := 23;
  constant ieee_exponent : positive := 8;
  constant top           : positive := 2 * mantissa - 1;         -- sign of the product; below it 4, 2 and 1
  constant pairs_border  : natural := ieeeoutput;
  constant sum_border    : natural := 1 - xoutput * (1 - outputscale);

  subtype mantissa_field is std_logic_vector(mantissa - 1 downto 0);
  subtype exponent_field is std_logic_vector(exponent_bits - 1 downto 0);
  subtype wide_exponent is std_logic_vector(wide_bits - 1 downto 0);
  subtype product_field is std_logic_vector(top downto 0);
  subtype mark_field is std_logic_vector(3 downto 0);            -- sign, nan, zip, sat

  -- choose
  signal a_exponent, b_exponent : exponent_field;
  signal a_mantissa, b_mantissa : mantissa_field;
  signal a_zero, b_zero, sign, nan, sat, zip : std_logic;
  signal choose_marks_d, choose_marks : mark_field;
  signal both_exponents_d, both_exponents : std_logic_vector(exponent_bits downto 0);

  -- rows
  signal rows_exponent_d, rows_exponent : wide_exponent;
  signal rows_marks : mark_field;

  -- pairs
  signal pairs_marks : mark_field;
  signal pairs_exponent : wide_exponent;

  -- sum
  signal product, value_d, value : product_field;
  signal exponent : wide_exponent;
  signal marks : mark_field;
begin
  assert mantissa = 32 or mantissa = 36 report "xfc_mulfp1x: mantissa is 32 or 36" severity failure;
  assert ieeeoutput + xoutput + multoutput + divoutput = 1 report "xfc_mulfp1x: one output is 1" severity failure;
  assert outputscale <= 1 report "xfc_mulfp1x: outputscale is 0 or 1" severity failure;
  assert synthesize <= 1 report "xfc_mulfp1x: synthesize is 0 or 1" severity failure;

  -- choose
  a_exponent <= aa(exponent_bits downto 1);
  b_exponent <= bb(exponent_bits downto 1);
  a_mantissa <= aa(mantissa + exponent_bits downto exponent_bits + 1);
  b_mantissa <= bb(mantissa + exponent_bits downto exponent_bits + 1);
  a_zero <= '1' when aasat = '0' and (aazip = '1' or unsigned(a_exponent) = 0) else '0';
  b_zero <= '1' when bbsat = '0' and (bbzip = '1' or unsigned(b_exponent) = 0) else '0';
  sign <= a_mantissa(mantissa - 1) xor b_mantissa(mantissa - 1);
  nan <= aanan or bbnan or (aasat and b_zero) or (a_zero and bbsat);
  sat <= not nan and (aasat or bbsat);
  zip <= not nan and not sat and (a_zero or b_zero);
  choose_marks_d <= sign & nan & zip & sat;
  both_exponents_d <= std_logic_vector(resize(unsigned(a_exponent), exponent_bits + 1) + unsigned(b_exponent));

  choose_0 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, choose_marks_d, choose_marks);
  choose_1 : entity work.xfc_register generic map (exponent_bits + 1, 1)
    port map (sysclk, enable, both_exponents_d, both_exponents);

  -- rows
  rows_exponent_d <= std_logic_vector(resize(unsigned(both_exponents), wide_bits) - bias);

  rows_0 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, choose_marks, rows_marks);
  rows_1 : entity work.xfc_register generic map (wide_bits, 1)
    port map (sysclk, enable, rows_exponent_d, rows_exponent);

  -- pairs
  pairs_0 : entity work.xfc_register generic map (4, pairs_border) port map (sysclk, enable, rows_marks, pairs_marks);
  pairs_1 : entity work.xfc_register generic map (wide_bits, pairs_border)
    port map (sysclk, enable, rows_exponent, pairs_exponent);

  -- sum: of a negative product the ones' complement where it becomes an IEEE number
  multiply : entity work.xfc_product generic map (mantissa, synthesize, 0, 1, pairs_border, 0, 0, 1)
    port map (sysclk, enable, a_mantissa, b_mantissa, product);
  value_d <= not product when ieeeoutput = 1 and pairs_marks(3) = '1' else product;

  sum_0 : entity work.xfc_register generic map (4, sum_border) port map (sysclk, enable, pairs_marks, marks);
  sum_1 : entity work.xfc_register generic map (wide_bits, sum_border)
    port map (sysclk, enable, pairs_exponent, exponent);
  sum_2 : entity work.xfc_register generic map (2 * mantissa, sum_border)
    port map (sysclk, enable, value_d, value);

  ieee_form : if ieeeoutput = 1 generate
    subtype packed_field is std_logic_vector(10 downto 0);
    constant low_bits   : positive := top - 4 - fraction_bits;
    -- The hidden one comes in between, and in front a bit that lets the carry in.
    constant chain_bits : positive := ieee_exponent + fraction_bits + 2;
    subtype chain is std_logic_vector(chain_bits - 1 downto 0);

    -- pairs
    signal next_exponent_d, next_exponent : wide_exponent;

    -- sum
    signal unshifted_d, halved_d, unshifted, halved : packed_field;
    signal unshifted_carries_d, halved_carries_d, low_bit_d : std_logic_vector(0 downto 0);
    signal unshifted_carries, halved_carries, low_bit : std_logic_vector(0 downto 0);

    -- round
    signal unshifted_dropped : std_logic_vector(1 downto 0);
    signal halved_dropped : std_logic_vector(2 downto 0);
    signal unshifted_up, halved_up, halve : std_logic;
    signal unshifted_augend, halved_augend, unshifted_addend, halved_addend, unshifted_sum, halved_sum, chosen : chain;
    signal counts : std_logic_vector(1 downto 0);
    signal result_d : std_logic_vector(31 downto 0);
  begin
    -- pairs: the exponent of a product from 2 on
    next_exponent_d <= std_logic_vector(unsigned(rows_exponent) + 1);
    pairs_2 : entity work.xfc_register generic map (wide_bits, 1)
      port map (sysclk, enable, next_exponent_d, next_exponent);

    -- sum: the number's sign and exponent below 2 and from 2 on, which bits of its fraction count (the highest one,
    -- the others), whether rounding may give it the next exponent; one bit that stands for those below the
    -- rounding's reach
    pack_unshifted : entity work.xfc_pack_ieee generic map (ieee_exponent, 2, wide_bits)
      port map (pairs_exponent, "11", pairs_marks, unshifted_d);
    pack_halved : entity work.xfc_pack_ieee generic map (ieee_exponent, 2, wide_bits)
      port map (next_exponent, "11", pairs_marks, halved_d);
    unshifted_carries_d(0) <= unshifted_d(0) or halved_d(0);
    halved_carries_d <= "1" when unsigned(next_exponent) = 0 and pairs_marks(2 downto 0) = "000" else
                       halved_d(0 downto 0);
    low_bit_d(0) <= pairs_marks(3) when unsigned(product(low_bits - 1 downto 0)) = 0 else not pairs_marks(3);
    sum_3 : entity work.xfc_register generic map (11, 1) port map (sysclk, enable, unshifted_d, unshifted);
    sum_4 : entity work.xfc_register generic map (11, 1) port map (sysclk, enable, halved_d, halved);
    sum_5 : entity work.xfc_register generic map (1, 1)
      port map (sysclk, enable, unshifted_carries_d, unshifted_carries);
    sum_6 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, halved_carries_d, halved_carries);
    sum_7 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, low_bit_d, low_bit);

    -- round: what is carried up to the next exponent has a fraction of zero; so has a product of 4, whose exponent is
    -- one more in any case
    unshifted_dropped <= value(low_bits) & low_bit;
    halved_dropped <= value(low_bits + 1 downto low_bits) & low_bit;
    round_unshifted : entity work.xfc_round_even generic map (2)
      port map (value(low_bits + 1), unshifted_dropped, marks(3), unshifted_up);
    round_halved : entity work.xfc_round_even generic map (3)
      port map (value(low_bits + 2), halved_dropped, marks(3), halved_up);
    unshifted_augend <= unshifted(9 downto 2) & value(top - 3 downto low_bits + 1) & unshifted_carries;
    halved_augend <= halved(9 downto 2) & halved_carries & value(top - 3 downto low_bits + 2) & halved_carries;
    unshifted_addend <= (0 => unshifted_up, others => '0');
    halved_addend <= (0 => halved_up, fraction_bits + 1 => value(top - 1), others => '0');
    unshifted_sum <= std_logic_vector(unsigned(unshifted_augend) + unsigned(unshifted_addend));
    halved_sum <= std_logic_vector(unsigned(halved_augend) + unsigned(halved_addend));
    halve <= value(top - 1) or value(top - 2);
    chosen <= halved_sum when halve = '1' else unshifted_sum;
    counts <= halved(1 downto 0) when halve = '1' else unshifted(1 downto 0);
    result_d(31) <= unshifted(10);
    result_d(30 downto fraction_bits) <= chosen(chain_bits - 1 downto fraction_bits + 2);
    result_d(fraction_bits - 1) <= (chosen(fraction_bits) and counts(1)) or marks(2);
    result_d(fraction_bits - 2 downto 0) <= chosen(fraction_bits - 1 downto 1) when counts(0) = '1' else
                                            (others => '0');

    round_0 : entity work.xfc_register generic map (32, 1) port map (sysclk, enable, result_d, cc);
    ccsat <= '0';
    cczip <= '0';
    ccnan <= '0';
  end generate;

  internal_form : if ieeeoutput = 0 generate
    -- settle
    signal settled, result_d : mantissa_field;
    signal next_exponent : wide_exponent;
    signal negative, marked, too_small, too_large : std_logic;
    signal result_flags_d, result_flags : std_logic_vector(2 downto 0);
  begin
    negative <= value(top);

    adder_form : if xoutput = 1 generate
      signal kept : std_logic_vector(mantissa - 3 downto 0);
      signal lost, two, exponent_is_zero : std_logic;
      signal halve : std_logic_vector(0 downto 0);
    begin
      lost <= '0' when unsigned(value(mantissa + 1 downto 0)) = 0 else '1';
      kept <= value(top downto mantissa + 3) & (value(mantissa + 2) or lost);
      two <= (negative xor value(top - 2)) or (not negative and value(top - 1));
      -- An exponent of 0 would be a zero.
      exponent_is_zero <= '1' when unsigned(exponent) = 0 else '0';
      halve(0) <= two when outputscale = 1 else exponent_is_zero;
      settled <= negative & negative & negative & kept(mantissa - 3 downto 2) & (kept(1) or kept(0))
                 when halve = "1" else negative & negative & kept;
      next_exponent <= std_logic_vector(unsigned(exponent) + unsigned(halve));
    end generate;

    normalized : if xoutput = 0 generate
      signal lost, converts, two, four, lowest : std_logic;
      signal increment : std_logic_vector(0 downto 0);
      signal magnitude_before, magnitude : std_logic_vector(mantissa downto 0);
      signal steps : std_logic_vector(1 downto 0);
    begin
      lost <= '0' when unsigned(value(mantissa - 3 downto 0)) = 0 else '1';
      converts <= negative when divoutput = 1 else '0';
      increment(0) <= converts and not lost;
      magnitude_before <= not value(top - 1 downto mantissa - 2) when converts = '1' else
                      value(top - 1 downto mantissa - 2);
      magnitude <= std_logic_vector(unsigned(magnitude_before) + unsigned(increment));
      four <= magnitude(mantissa) when divoutput = 1 else magnitude(mantissa) and not negative;
      two <= magnitude(mantissa - 1) or four when divoutput = 1 else (negative xor magnitude(mantissa - 1)) or four;
      lowest <= magnitude(0) or lost;
      settled <= negative & (magnitude(mantissa - 1) or four) & magnitude(mantissa - 2 downto 2) &
                 (magnitude(1) or lowest)
                 when two = '1' else negative & magnitude(mantissa - 2 downto 1) & lowest;
      steps <= four & (two and not four);
      next_exponent <= std_logic_vector(unsigned(exponent) + unsigned(steps));
    end generate;

    marked <= marks(2) or marks(1) or marks(0);
    too_small <= '1' when signed(next_exponent) <= 0 else '0';
    too_large <= '1' when signed(next_exponent) >= 960 else '0';
    result_d(mantissa - 1) <= marks(3) when marked = '1' else settled(mantissa - 1);
    result_d(mantissa - 2 downto 0) <= settled(mantissa - 2 downto 0);
    result_flags_d <= marks(2) & (marks(1) or (too_small and not marked)) & (marks(0) or (too_large and not marked));

    settle_0 : entity work.xfc_register generic map (exponent_bits, 1)
      port map (sysclk, enable, next_exponent(exponent_bits - 1 downto 0), cc(exponent_bits downto 1));
    settle_1 : entity work.xfc_register generic map (mantissa, 1)
      port map (sysclk, enable, result_d, cc(cc'high downto exponent_bits + 1));
    settle_2 : entity work.xfc_register generic map (3, 1)
      port map (sysclk, enable, result_flags_d, result_flags);
    ccsat <= result_flags(0);
    cczip <= result_flags(1);
    ccnan <= result_flags(2);
  end generate;
end rtl;
